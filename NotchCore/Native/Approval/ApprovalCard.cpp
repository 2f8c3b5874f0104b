// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Approval/ApprovalCard.h"

#include "Native/Approval/NativeApprovalClassifier.h"

#include <algorithm>

namespace notch {

bool hasTwoButtons(const CardNodes& nodes)
{
    const auto isButton = [](const auto* node) { return node->is(role::button); };
    return std::ranges::count_if(nodes, isButton) == 2;
}

bool areVisible(const CardNodes& nodes)
{
    return std::ranges::all_of(nodes, [](const auto* node) { return node->visible; });
}

NativeApprovalMatch makeMatch(NativeApprovalLayout layout, const ApprovalButtons& buttons,
    const NativeApprovalNode& container, const CardNodes& contextNodes,
    const NativeApprovalContext& context)
{
    NativeApprovalMatch match{.windowID = buttons.windowID(),
        .containerID = container.id,
        .allowID = buttons.allowID(),
        .denyID = buttons.denyID(),
        .layout = layout,
        .context = context};
    for (const auto* node : contextNodes)
        match.contextNodeIDs.push_back(node->id);
    return match;
}

NativeApprovalContext makeContext(std::string_view title, std::string_view command)
{
    return {.title = std::string(title),
        .risk = std::string(NativeApprovalClassifier::riskText),
        .command = std::string(command),
        .allowLabel = std::string(NativeApprovalClassifier::allowLabel),
        .denyLabel = std::string(NativeApprovalClassifier::denyLabel)};
}

} // namespace notch
