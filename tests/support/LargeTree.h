// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/Tree/NativeApprovalNode.h"

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace notch {

// Trees too large to write down. Every node is visible, enabled and has an id of its own, "b1" on.
class LargeTree {
public:
    NativeApprovalNode node(std::string_view role, std::vector<std::string> texts = {})
    {
        NativeApprovalNode made;
        made.id = "b" + std::to_string(++count_);
        made.role = role;
        made.texts = std::move(texts);
        made.enabled = made.visible = true;
        return made;
    }

    // `depth` nodes, each the last child of the one before; `decorate` may give each children of
    // its own first.
    NativeApprovalNode chain(std::size_t depth, std::string_view role,
        const std::function<void(NativeApprovalNode&)>& decorate = {})
    {
        NativeApprovalNode below = node(role);
        for (std::size_t level = 1; level < depth; ++level) {
            NativeApprovalNode parent = node(role);
            if (decorate)
                decorate(parent);
            parent.children.push_back(std::move(below));
            below = std::move(parent);
        }
        return below;
    }

private:
    std::size_t count_ = 0;
};

} // namespace notch
