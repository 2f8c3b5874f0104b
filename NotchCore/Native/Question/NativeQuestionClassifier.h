// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/Question/NativeQuestionMatch.h"
#include "Native/Tree/NativeApprovalNode.h"

#include <optional>
#include <span>

namespace notch {

// Decides from the windows of one scan whether exactly one question card is on screen. Pure;
// everything that is not the known card to the last detail is no card. Takes time linear in the
// tree, whatever its shape, and no stack that grows with its depth.
namespace NativeQuestionClassifier {

// `in`: one root per scanned window, in scan order.
std::optional<NativeQuestionMatch> uniqueMatch(std::span<const NativeApprovalNode> in);

// A button anywhere, hidden or not, has a label of the card's paging controls: tells a window
// without a question from one whose question was seen and refused.
bool hasRecognizableQuestion(std::span<const NativeApprovalNode> in);

} // namespace NativeQuestionClassifier
} // namespace notch
