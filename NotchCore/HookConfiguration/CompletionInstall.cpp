// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "HookConfiguration/HookInstaller.h"
#include "HookConfiguration/Location.h"
#include "HookConfiguration/OwnedHooks.h"
#include "HookConfiguration/QuillMossProfile.h"
#include "HookConfiguration/SettingsDocument.h"

#include <algorithm>
#include <array>

namespace notch {
namespace {

// One hook at the start and one at the end of a turn.
constexpr std::array<std::string_view, 2> events{"UserPromptSubmit", "FinalStop"};

// Either variant, so that installing one replaces the other.
bool isCompletionCommand(std::string_view command)
{
    const auto source = rawValue(QuillMossProfile::quillmoss);
    return HookInstaller::matchesOwnedCommand(command, HookInstaller::completionHookFlag,
               HookInstaller::completionOwnerMarker, source)
        || HookInstaller::matchesOwnedCommand(
            command, HookInstaller::probeFlag, HookInstaller::probeOwnerMarker, source);
}

bool isUnchangedGroup(std::string_view, const Json::Object& group)
{
    return group.size() == 1; // The key "hooks".
}

constexpr OwnedHooks completionHooks{
    .events = events,
    .timeout = HookInstaller::completionTimeout,
    .isOwnedCommand = isCompletionCommand,
    .isUnchangedGroup = isUnchangedGroup,
    .changedMessage = "结束提醒 Hook 的选项已被修改，请先手动核对；未覆盖配置。",
};

Json::Object groupsOf(const std::string& command)
{
    Json::Object groups;
    for (const auto event : events)
        groups.emplace(event, Json::Array{ownedGroup(command, completionHooks.timeout)});
    return groups;
}

// The event has exactly one own hook, and that is the wanted one.
bool isInstalled(const Json& hooks, std::string_view event, const std::string& wanted)
{
    const auto* groups = hooks.member(event);
    if (!groups)
        return false;
    int owned = 0;
    int exact = 0;
    for (const auto& group : *groups->array()) {
        for (const auto& hook : hooksOf(group)) {
            const auto* command = hookCommand(hook);
            owned += command && isCompletionCommand(*command) ? 1 : 0;
            exact += command && *command == wanted ? 1 : 0;
        }
    }
    return owned == 1 && exact == 1;
}

} // namespace

std::string HookInstaller::installCompletion(
    std::string_view settingsURL, std::string_view executableURL, CompletionVariant variant) const
{
    const auto command = completionCommand(executableURL, variant);
    return installHooks(files_, settingsURL, completionHooks, groupsOf(command));
}

std::string HookInstaller::uninstallCompletion(std::string_view settingsURL) const
{
    return uninstallHooks(files_, settingsURL, completionHooks, "配置文件不存在。");
}

bool HookInstaller::completionInstalled(
    std::string_view settingsURL, std::string_view executableURL, CompletionVariant variant) const
{
    const auto command = completionCommand(executableURL, variant);
    const auto location = Location::open(files_, settingsURL, MissingDirectories::leave);
    if (!location)
        return false;
    const auto snapshot = location->read();
    const Json root = validateSettings(snapshot.data);
    const auto* hooks = root.member("hooks");
    if (hooks)
        prune(*hooks->object(), completionHooks); // Called only to fail on an edited entry.
    verifyUnchanged(*location, snapshot);
    return hooks && std::ranges::all_of(events, [&](const auto event) {
        return isInstalled(*hooks, event, command);
    });
}

} // namespace notch
