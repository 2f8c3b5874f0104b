// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Approval/NativeApprovalClassifier.h"

#include "Native/Approval/ApprovalButtons.h"
#include "Native/Approval/ApprovalCard.h"
#include "Native/Approval/ButtonLabels.h"
#include "Native/Approval/CardTexts.h"
#include "Native/Tree/PreOrderWalk.h"
#include "Unicode/Pattern.h"
#include "Unicode/Scalars.h"

#include <cstddef>

namespace notch::NativeApprovalClassifier {
namespace {

constexpr std::size_t maxCommandBytes = 65536;

bool holds(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

} // namespace

std::optional<std::string_view> normalizedButtonLabel(std::string_view text)
{
    static const Pattern allow(R"(^(?:1[\s.、：:]*)?允许本次删除$)");
    static const Pattern deny(R"(^(?:2[\s.、：:]*)?取消删除$)");
    if (!holds(text, allowLabel) && !holds(text, denyLabel))
        return std::nullopt; // Neither pattern can match, as for nearly every button of a window.
    if (hasUnsafeScalars(text))
        return std::nullopt;
    const auto label = trimmed(text);
    if (allow.isFoundIn(label))
        return allowLabel;
    if (deny.isFoundIn(label))
        return denyLabel;
    return std::nullopt;
}

bool isCompleteCommand(std::string_view text)
{
    if (trimmed(text).empty())
        return false;
    if (text.size() > maxCommandBytes)
        return false;
    // An ellipsis of any kind may hide a part of the text.
    if (holds(text, "\u2026"))
        return false;
    if (holds(text, "..."))
        return false;
    if (holds(text, "\u22EF"))
        return false;
    return !hasUnsafeScalars(text);
}

bool hasRecognizableButtons(std::span<const NativeApprovalNode> in)
{
    ButtonLabels labels;
    for (PreOrderWalk walk(in); const auto* node = walk.next();) {
        if (node->is(role::button) && labels.of(*node))
            return true;
    }
    return false;
}

std::optional<NativeApprovalMatch> uniqueMatch(std::span<const NativeApprovalNode> in)
{
    const auto buttons = findApprovalButtons(in);
    if (!buttons)
        return std::nullopt;
    if (auto match = groupedCard(*buttons))
        return match;
    return flattenedCard(*buttons);
}

} // namespace notch::NativeApprovalClassifier
