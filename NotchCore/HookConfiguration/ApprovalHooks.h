// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "HookConfiguration/OwnedHooks.h"

namespace notch {

// The approval hook: one group with one hook in "PermissionRequest". An older form in
// "PreToolUse" asked about every command; it is recognised and removed, never written.
const OwnedHooks& approvalHooks();

// What an installation adds: groups by event.
Json::Object approvalHookGroups(const std::string& command);

} // namespace notch
