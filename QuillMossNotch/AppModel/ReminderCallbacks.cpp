// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppModel/ReminderCallbacks.h"

#include <utility>

namespace notch {
namespace {

using Pid = ReminderCallbacks::Pid;

// With two of them nobody can tell which one a reminder is about: then there is none.
std::optional<HostApplication> onlyHost(const HostApplications& hosts)
{
    const auto running = hosts.running();
    if (running.size() != 1 || running.front().isTerminated)
        return std::nullopt;
    return running.front();
}

std::optional<HostApplication> hostOf(const HostApplications& hosts, Pid pid)
{
    const auto host = onlyHost(hosts);
    return host && host->pid == pid ? host : std::nullopt;
}

} // namespace

ReminderCallbacks ReminderCallbacks::of(const HostApplications& hosts,
    std::function<bool(Pid)> activate, const Preferences& preferences)
{
    const auto isOn = [&preferences](Preference preference) {
        return [&preferences, preference] { return preferences.isOn(preference); };
    };
    return {
        .questionIsBackground =
            [&hosts](Pid pid) {
                const auto host = hostOf(hosts, pid);
                return host && !host->isActive && !host->isHidden;
            },
        .questionActivate =
            [&hosts, activate](Pid pid) {
                const auto host = hostOf(hosts, pid);
                return host && !host->isHidden && activate(pid);
            },
        .questionFeatureEnabled = isOn(Preference::questionRemindersEnabled),
        .completionTarget =
            [&hosts] {
                const auto host = onlyHost(hosts);
                return host ? std::optional(host->pid) : std::nullopt;
            },
        .completionIsBackground =
            [&hosts](Pid pid) {
                const auto host = hostOf(hosts, pid);
                return host && !host->isActive;
            },
        .completionActivate = [&hosts, activate = std::move(activate)](
                                  Pid pid) { return hostOf(hosts, pid) && activate(pid); },
        .completionFeatureEnabled = isOn(Preference::completionRemindersEnabled),
        .completionAutoCollapseEnabled = isOn(Preference::autoCollapse),
    };
}

} // namespace notch
