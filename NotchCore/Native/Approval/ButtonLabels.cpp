// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Approval/ButtonLabels.h"

#include "Native/Approval/CardTexts.h"
#include "Native/Approval/NativeApprovalClassifier.h"
#include "Native/Approval/ReducedText.h"
#include "Native/Tree/PreOrderWalk.h"

#include <algorithm>
#include <cstddef>

namespace notch {
namespace {

using NativeApprovalClassifier::normalizedButtonLabel;

// The label that every text agrees on.
std::optional<std::string_view> commonLabel(const std::vector<std::string>& texts)
{
    std::optional<std::string_view> common;
    for (const auto& text : texts) {
        if (text.empty())
            continue;
        const auto label = normalizedButtonLabel(text);
        if (!label || (common && common != label))
            return std::nullopt;
        common = label;
    }
    return common;
}

// The node shows no text, and nothing below it could.
bool isSilentLeaf(const NativeApprovalNode& node)
{
    return node.children.empty() && !node.is(role::staticText);
}

// A node in a button's subtree, and what the part of its own subtree that was read so far shows.
struct ShownBelow {
    const NativeApprovalNode* node = nullptr;
    std::size_t parent = 0;
    ReducedText shown;
};

std::vector<ShownBelow> nodesBelow(const NativeApprovalNode& button)
{
    std::vector<ShownBelow> nodes;
    std::vector<std::size_t> open; // Indices of the last node and its ancestors.
    for (PreOrderWalk walk({&button, 1}); const auto* node = walk.next();) {
        open.resize(walk.depth());
        nodes.push_back({.node = node, .parent = open.empty() ? 0 : open.back()});
        open.push_back(nodes.size() - 1);
    }
    return nodes;
}

} // namespace

std::optional<std::string_view> ButtonLabels::of(const NativeApprovalNode& button)
{
    if (!button.isTextless())
        return commonLabel(button.texts);
    if (std::ranges::all_of(button.children, isSilentLeaf))
        return std::nullopt; // Most textless buttons hold an image only.
    while (!ahead_.empty() && ahead_.back().button != &button)
        ahead_.pop_back();
    if (ahead_.empty())
        readShownTexts(button);
    return ahead_.back().label;
}

void ButtonLabels::readShownTexts(const NativeApprovalNode& button)
{
    auto nodes = nodesBelow(button);
    // From the last node to the first, so that each is complete before it joins its parent.
    for (auto at = nodes.size(); at-- > 0;) {
        auto& [node, parent, shown] = nodes[at];
        if (node->is(role::staticText)) {
            for (const auto text : ownTexts(*node))
                shown.append(text);
        }
        if (node->is(role::button) && node->isTextless())
            ahead_.push_back({.button = node, .label = normalizedButtonLabel(shown.text())});
        if (at > 0 && !nodes[parent].node->is(role::staticText))
            nodes[parent].shown.prepend(shown);
    }
}

} // namespace notch
