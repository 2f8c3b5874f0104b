// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Tree/NativeApprovalNode.h"

#include <algorithm>
#include <utility>

namespace notch {

// A chain of children would destroy itself by recursion, one stack frame a level, and the host
// decides how long the chain is. So each list is taken out of its node before the node goes.
NativeApprovalNode::~NativeApprovalNode()
{
    if (children.empty())
        return;
    std::vector<std::vector<NativeApprovalNode>> doomed;
    doomed.push_back(std::move(children));
    while (!doomed.empty()) {
        auto siblings = std::move(doomed.back());
        doomed.pop_back();
        for (auto& node : siblings) {
            if (!node.children.empty())
                doomed.push_back(std::move(node.children));
        }
    }
}

bool NativeApprovalNode::isLiveLeaf(std::string_view wanted) const
{
    return is(wanted) && visible && enabled && children.empty();
}

bool NativeApprovalNode::isTextless() const
{
    return std::ranges::all_of(texts, [](const auto& text) { return text.empty(); });
}

} // namespace notch
