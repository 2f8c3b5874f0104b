// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>

namespace notch {

// Which events may become approval requests; the hook and the server apply the same test.
struct HookEventPolicy {
    // Exactly the event "PermissionRequest", and no tool that asks the person something itself.
    static bool acceptsApproval(std::string_view eventName, std::string_view toolName);
};

} // namespace notch
