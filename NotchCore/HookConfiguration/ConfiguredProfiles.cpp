// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "HookConfiguration/ConfiguredProfiles.h"

#include "Foundation/Account.h"
#include "Foundation/Json.h"
#include "HookConfiguration/HookInstaller.h"
#include "HookConfiguration/Location.h"

#include <algorithm>

namespace notch {
namespace {

const Json::Array& elements(const Json* value)
{
    static const Json::Array none;
    const auto* array = value ? value->array() : nullptr;
    return array ? *array : none;
}

bool isApprovalHook(const Json& hook, const std::string& command)
{
    const auto* type = hook.string("type");
    const auto* itsCommand = hook.string("command");
    const auto* timeout = hook.member("timeout");
    return type && *type == "command" && itsCommand && *itsCommand == command && timeout
        && *timeout == Json(JsonNumber(HookInstaller::approvalTimeout));
}

bool holdsApprovalHook(const Json& settings, const std::string& command)
{
    const auto* hooks = settings.member("hooks");
    const auto& groups = elements(hooks ? hooks->member("PermissionRequest") : nullptr);
    return std::ranges::any_of(groups, [&](const Json& group) {
        return !group.member("matcher")
            && std::ranges::any_of(elements(group.member("hooks")),
                [&](const Json& hook) { return isApprovalHook(hook, command); });
    });
}

} // namespace

bool holdsApprovalHook(const FileSystem& files, std::string_view settingsURL,
    std::string_view executableURL, QuillMossProfile profile)
{
    try {
        const auto command = HookInstaller::approvalCommand(executableURL, rawValue(profile));
        const auto location = Location::open(files, settingsURL, MissingDirectories::leave);
        const auto snapshot = location ? location->read() : FileSnapshot{};
        const auto settings = Json::parse(snapshot.data.value_or("{}"));
        return settings && holdsApprovalHook(*settings, command);
    } catch (const HookInstaller::Failure&) {
        return false;
    }
}

std::optional<std::vector<std::string>> configuredProfiles()
{
    const auto executable = executablePath();
    if (!executable)
        return std::nullopt;
    std::vector<std::string> names;
    for (const auto profile : allQuillMossProfiles)
        if (holdsApprovalHook(FileSystem::real(), settingsURL(profile), *executable, profile))
            names.emplace_back(displayName(profile));
    return names;
}

} // namespace notch
