// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/Tree/NativeApprovalNode.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace notch {

// Visits nodes with all their descendants, each node before its children. Holds its own stack, so
// that the depth of a tree costs memory and never the thread's stack.
//
//   for (PreOrderWalk walk(roots); const auto* node = walk.next();)
class PreOrderWalk {
public:
    // Borrows the nodes.
    explicit PreOrderWalk(std::span<const NativeApprovalNode> nodes);

    // Null at the end.
    const NativeApprovalNode* next();
    // Goes on after the subtree of the node last visited.
    void skipChildren() { descend_ = false; }
    // Of the node last visited; the nodes given have depth 0.
    std::size_t depth() const { return open_.size() - 1; }
    // From the node given down to the one last visited.
    std::vector<const NativeApprovalNode*> path() const;

private:
    // The siblings still to visit, the current one first.
    using Siblings = std::span<const NativeApprovalNode>;

    std::vector<Siblings> open_;
    Siblings first_;
    bool descend_ = true;
};

// The nodes with all their descendants; nothing if they are more than `limit`.
std::optional<std::vector<const NativeApprovalNode*>> flattenNodes(
    std::span<const NativeApprovalNode> nodes, std::size_t limit);

} // namespace notch
