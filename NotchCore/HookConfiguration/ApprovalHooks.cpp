// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "HookConfiguration/ApprovalHooks.h"

#include "HookConfiguration/HookInstaller.h"

#include <array>

namespace notch {
namespace {

constexpr std::string_view permissionRequest = "PermissionRequest";
constexpr std::string_view preToolUse = "PreToolUse";
constexpr std::array events{permissionRequest, preToolUse};

bool isApprovalCommand(std::string_view command)
{
    return HookInstaller::matchesOwnedCommand(
        command, HookInstaller::hookFlag, HookInstaller::ownerMarker);
}

// Other keys of the group may be another program's; the matcher decides what the hook is asked
// about.
bool isUnchangedGroup(std::string_view event, const Json::Object& group)
{
    const auto matcher = group.find("matcher");
    if (event == preToolUse)
        return matcher != group.end() && matcher->second == Json("Bash");
    return event == permissionRequest && matcher == group.end();
}

} // namespace

const OwnedHooks& approvalHooks()
{
    static constexpr OwnedHooks kind{
        .events = events,
        .timeout = HookInstaller::approvalTimeout,
        .isOwnedCommand = isApprovalCommand,
        .isUnchangedGroup = isUnchangedGroup,
        .changedMessage = "本应用的 hook 已被手动修改；为避免覆盖更改，操作已停止。",
    };
    return kind;
}

Json::Object approvalHookGroups(const std::string& command)
{
    return {{std::string(permissionRequest),
        Json::Array{ownedGroup(command, approvalHooks().timeout)}}};
}

} // namespace notch
