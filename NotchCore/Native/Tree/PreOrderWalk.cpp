// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Tree/PreOrderWalk.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace notch {

PreOrderWalk::PreOrderWalk(std::span<const NativeApprovalNode> nodes)
    : first_(nodes)
{
}

const NativeApprovalNode* PreOrderWalk::next()
{
    const auto below = open_.empty()                 ? std::exchange(first_, {})
                     : std::exchange(descend_, true) ? Siblings(open_.back().front().children)
                                                     : Siblings();
    if (!below.empty()) {
        open_.push_back(below);
        return &below.front();
    }
    while (!open_.empty()) {
        open_.back() = open_.back().subspan(1);
        if (!open_.back().empty())
            return &open_.back().front();
        open_.pop_back();
    }
    return nullptr;
}

std::vector<const NativeApprovalNode*> PreOrderWalk::path() const
{
    std::vector<const NativeApprovalNode*> nodes;
    std::ranges::transform(
        open_, std::back_inserter(nodes), [](const auto& siblings) { return &siblings.front(); });
    return nodes;
}

std::optional<std::vector<const NativeApprovalNode*>> flattenNodes(
    std::span<const NativeApprovalNode> nodes, std::size_t limit)
{
    std::vector<const NativeApprovalNode*> flat;
    for (PreOrderWalk walk(nodes); const auto* node = walk.next();) {
        if (flat.size() == limit)
            return std::nullopt;
        flat.push_back(node);
    }
    return flat;
}

} // namespace notch
