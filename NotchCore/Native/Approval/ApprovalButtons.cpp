// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Approval/ApprovalButtons.h"

#include "Native/Approval/ButtonLabels.h"
#include "Native/Approval/NativeApprovalClassifier.h"
#include "Native/Tree/PreOrderWalk.h"

#include <algorithm>
#include <cstddef>

namespace notch {
namespace {

// A second button of a kind ends the search, since nothing that follows can take it back.
std::optional<ApprovalButtons> collectButtons(std::span<const NativeApprovalNode> in)
{
    ApprovalButtons found;
    ButtonLabels labels;
    for (PreOrderWalk walk(in); const auto* node = walk.next();) {
        if (!node->visible) {
            walk.skipChildren();
            continue;
        }
        if (!node->is(role::button))
            continue;
        const auto label = labels.of(*node);
        if (!label)
            continue;
        auto& path = label == NativeApprovalClassifier::allowLabel ? found.allow : found.deny;
        if (!path.empty())
            return std::nullopt;
        path = walk.path();
    }
    return found;
}

} // namespace

ApprovalButtons::Path ApprovalButtons::commonAncestors() const
{
    const auto parted = std::ranges::mismatch(
        allow, deny, [](const auto* a, const auto* b) { return a->id == b->id; });
    return {allow.begin(), parted.in1};
}

std::optional<ApprovalButtons> findApprovalButtons(std::span<const NativeApprovalNode> in)
{
    auto found = collectButtons(in);
    if (!found || found->allow.empty() || found->deny.empty())
        return std::nullopt;
    if (found->allow.front()->id != found->deny.front()->id)
        return std::nullopt;
    if (!found->allow.back()->enabled || !found->deny.back()->enabled)
        return std::nullopt;
    return found;
}

} // namespace notch
