// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/Tree/Role.h"
#include "Native/Tree/ScreenRect.h"

#include <optional>
#include <string>
#include <vector>

namespace notch {

// One element of a window of the host, as read, with its children. Plain data: nothing of the
// platform is left in it. Moved, never copied; a tree of any depth can be destroyed.
struct NativeApprovalNode {
    std::string id; // Stable and unique within one scan.
    std::string role;
    std::vector<std::string> texts; // In reading order; may hold empty ones.
    bool enabled = false;
    bool visible = false;
    std::vector<NativeApprovalNode> children; // In accessibility order.
    std::optional<ScreenRect> frame; // Nothing if it could not be read.

    NativeApprovalNode() = default;
    NativeApprovalNode(NativeApprovalNode&&) = default;
    NativeApprovalNode& operator=(NativeApprovalNode&&) = default;
    ~NativeApprovalNode();

    bool is(std::string_view wanted) const { return role == wanted; }
    bool hasUsableFrame() const { return frame && isUsableFrame(*frame); }
    // Of this role, visible and enabled, without children.
    bool isLiveLeaf(std::string_view wanted) const;
    // It shows no text of its own: every entry is empty.
    bool isTextless() const;
};

} // namespace notch
