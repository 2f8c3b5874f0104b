// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Json.h"
#include "HookConfiguration/FileSystem.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace notch {

// One kind of hook that this system keeps in the host's file: how an entry is recognised, what it
// must look like, and what is said when it does not. Entries of different kinds share nothing, so
// that installing or removing one kind leaves the other as it is.
struct OwnedHooks {
    std::span<const std::string_view> events; // That have its entries, or once had them.
    std::int64_t timeout = 0;
    bool (*isOwnedCommand)(std::string_view command) = nullptr;
    // Whether the group of an own entry of this event still has only what this system wrote there.
    bool (*isUnchangedGroup)(std::string_view event, const Json::Object& group) = nullptr;
    const char* changedMessage = nullptr; // An own entry was edited by hand.
};

// The hook object of an entry: these three keys and no other.
Json ownedHook(const std::string& command, std::int64_t timeout);
// A group that holds nothing but that hook.
Json ownedGroup(const std::string& command, std::int64_t timeout);
// The command of a hook of the type "command"; null for any other hook.
const std::string* hookCommand(const Json& hook);

// `hooks`, which must be validated, without the entries of this kind; everything else keeps value
// and order. Throws HookInstaller::Failure when an own entry is no longer as it was written.
Json::Object prune(Json::Object hooks, const OwnedHooks& kind);

// Changes the file under the lock, with a backup, whose path is the result. Throws
// HookInstaller::Failure, having changed nothing.

// Puts the groups of each event of `groups` after those that the prune leaves.
std::string installHooks(const FileSystem& files, std::string_view settingsURL,
    const OwnedHooks& kind, const Json::Object& groups);
// `missingMessage`: there is no file.
std::string uninstallHooks(const FileSystem& files, std::string_view settingsURL,
    const OwnedHooks& kind, const char* missingMessage);

} // namespace notch
