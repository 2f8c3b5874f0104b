// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "HookConfiguration/OwnedHooks.h"

#include "HookConfiguration/HookInstaller.h"
#include "HookConfiguration/Location.h"
#include "HookConfiguration/SettingsDocument.h"

#include <algorithm>
#include <optional>

namespace notch {
namespace {

using Failure = HookInstaller::Failure;

bool isOwned(const Json& hook, const OwnedHooks& kind)
{
    const auto* command = hookCommand(hook);
    return command && kind.isOwnedCommand(*command);
}

void requireUnchanged(
    const Json& hook, const Json::Object& group, std::string_view event, const OwnedHooks& kind)
{
    if (!kind.isUnchangedGroup(event, group) || hook != ownedHook(*hookCommand(hook), kind.timeout))
        throw Failure(kind.changedMessage);
}

// A group with a key that this system never writes stays, so that the key is not lost.
bool hasForeignKey(const Json::Object& group)
{
    return std::ranges::any_of(group,
        [](const auto& member) { return member.first != "hooks" && member.first != "matcher"; });
}

// Takes the own hooks out of the group; true when nothing is left of the group.
bool pruneGroup(Json::Object& group, std::string_view event, const OwnedHooks& kind)
{
    auto& hooks = *group.at("hooks").array();
    const auto dropped = std::erase_if(hooks, [&](const Json& hook) {
        if (!isOwned(hook, kind))
            return false;
        requireUnchanged(hook, group, event, kind);
        return true;
    });
    return dropped > 0 && hooks.empty() && !hasForeignKey(group);
}

using HooksObject = std::optional<Json::Object>; // Nothing: the document has no such key.

HooksObject takeHooks(Json::Object& root)
{
    const auto found = root.find("hooks");
    if (found == root.end())
        return std::nullopt;
    auto hooks = std::move(*found->second.object());
    root.erase(found);
    return hooks;
}

// One change of the file that was read, under the lock. Only "hooks" can change, so only "hooks" is
// kept twice.
template <class Edit>
std::string changeHooks(const Location& location, const FileSnapshot& snapshot, const Edit& edit)
{
    auto root = validateSettings(snapshot.data);
    const auto oldHooks = takeHooks(root);
    auto newHooks = edit(oldHooks);
    auto backup = writePrivateBackup(
        location, snapshot.data ? std::string_view(*snapshot.data) : std::string_view("{}\n"));
    if (snapshot.data && newHooks == oldHooks) {
        verifyUnchanged(location, snapshot);
        return backup;
    }
    if (newHooks)
        root.emplace("hooks", std::move(*newHooks));
    replaceConfigurationAtomically(location, std::move(root), snapshot);
    return backup;
}

void append(Json::Object& hooks, const std::string& event, const Json::Array& groups)
{
    auto& all = *hooks.try_emplace(event, Json::Array()).first->second.array();
    all.insert(all.end(), groups.begin(), groups.end());
}

} // namespace

Json ownedHook(const std::string& command, std::int64_t timeout)
{
    return Json::Object{
        {"type", "command"}, {"command", command}, {"timeout", JsonNumber(timeout)}};
}

Json ownedGroup(const std::string& command, std::int64_t timeout)
{
    return Json::Object{{"hooks", Json::Array{ownedHook(command, timeout)}}};
}

const std::string* hookCommand(const Json& hook)
{
    const auto* type = hook.string("type");
    return type && *type == "command" ? hook.string("command") : nullptr;
}

Json::Object prune(Json::Object hooks, const OwnedHooks& kind)
{
    for (const auto event : kind.events) {
        const auto found = hooks.find(event);
        if (found == hooks.end())
            continue;
        Json::Array remaining;
        for (auto& group : *found->second.array())
            if (!pruneGroup(*group.object(), event, kind))
                remaining.push_back(std::move(group));
        if (remaining.empty())
            hooks.erase(found);
        else
            found->second = std::move(remaining);
    }
    return hooks;
}

std::string installHooks(const FileSystem& files, std::string_view settingsURL,
    const OwnedHooks& kind, const Json::Object& groups)
{
    const auto location = Location::open(files, settingsURL, MissingDirectories::create);
    if (!location)
        throw Failure("无法打开配置目录。");
    return withInstallLock(*location, [&] {
        return changeHooks(*location, location->read(), [&](const HooksObject& oldHooks) {
            auto hooks = prune(oldHooks.value_or(Json::Object()), kind);
            for (const auto& [event, added] : groups)
                append(hooks, event, *added.array());
            return HooksObject(std::move(hooks));
        });
    });
}

std::string uninstallHooks(const FileSystem& files, std::string_view settingsURL,
    const OwnedHooks& kind, const char* missingMessage)
{
    const auto location = Location::open(files, settingsURL, MissingDirectories::leave);
    if (!location)
        throw Failure(missingMessage);
    return withInstallLock(*location, [&] {
        const auto snapshot = location->read();
        if (!snapshot.data)
            throw Failure(missingMessage);
        return changeHooks(*location, snapshot, [&](const HooksObject& oldHooks) {
            auto hooks = prune(oldHooks.value_or(Json::Object()), kind);
            return hooks.empty() ? HooksObject() : HooksObject(std::move(hooks));
        });
    });
}

} // namespace notch
