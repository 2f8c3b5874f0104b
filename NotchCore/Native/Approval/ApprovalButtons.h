// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/Tree/NativeApprovalNode.h"

#include <optional>
#include <span>
#include <vector>

namespace notch {

// The only allow button and the only deny button on screen, each with the way to it. Points into
// the scan.
struct ApprovalButtons {
    // From a window's root to the button, both included; never empty.
    using Path = std::vector<const NativeApprovalNode*>;

    Path allow;
    Path deny;

    const std::string& windowID() const { return allow.front()->id; }
    const std::string& allowID() const { return allow.back()->id; }
    const std::string& denyID() const { return deny.back()->id; }
    // The nodes that both are in, from the root down.
    Path commonAncestors() const;
};

// Nothing unless there is exactly one of each that is visible with all that it is in, both in one
// window and enabled.
std::optional<ApprovalButtons> findApprovalButtons(std::span<const NativeApprovalNode> in);

} // namespace notch
