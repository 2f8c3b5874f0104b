// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/HostApplications.h"
#include "Services/Preferences.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace notch {

// What reminders ask of the host's processes and of the person's switches, anew each time.
struct ReminderCallbacks {
    using Pid = std::int32_t;

    std::function<bool(Pid)> questionIsBackground;
    std::function<bool(Pid)> questionActivate; // True: the host was brought to the front.
    std::function<bool()> questionFeatureEnabled;

    std::function<std::optional<Pid>()> completionTarget; // Nothing unless exactly one host runs.
    std::function<bool(Pid)> completionIsBackground;
    std::function<bool(Pid)> completionActivate;
    std::function<bool()> completionFeatureEnabled;
    std::function<bool()> completionAutoCollapseEnabled;

    // The real ones. `activate` asks the desktop to bring a process to the front, also one that is
    // hidden. The others are borrowed and must outlive them.
    //
    //   a host that is hidden      for questions   for turn ends
    //   is in the background       no              yes
    //   can be activated           no              yes
    static ReminderCallbacks of(const HostApplications& hosts, std::function<bool(Pid)> activate,
        const Preferences& preferences);
};

} // namespace notch
