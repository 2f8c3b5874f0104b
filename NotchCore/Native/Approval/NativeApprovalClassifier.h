// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/Approval/NativeApprovalMatch.h"
#include "Native/Tree/NativeApprovalNode.h"

#include <optional>
#include <span>
#include <string_view>

namespace notch {

// Decides from the windows of one scan whether exactly one bulk-delete confirmation card is on
// screen and actionable. Pure; everything that does not pass every rule is no card. Runs once on
// the scan, and again on a fresh tree right before a press. Takes time linear in the tree,
// whatever its shape, and no stack that grows with its depth.
namespace NativeApprovalClassifier {

inline constexpr std::string_view allowLabel = "允许本次删除";
inline constexpr std::string_view denyLabel = "取消删除";
inline constexpr std::string_view riskText = "高风险命令，可能影响系统稳定性";

// `in`: one root per scanned window, in scan order.
std::optional<NativeApprovalMatch> uniqueMatch(std::span<const NativeApprovalNode> in);

// At least one button has one of the labels, hidden or not, whether or not its card passes: tells
// a window without a card from one whose card was seen and refused.
bool hasRecognizableButtons(std::span<const NativeApprovalNode> in);

// allowLabel or denyLabel, for a button's text with or without its number; else nothing.
std::optional<std::string_view> normalizedButtonLabel(std::string_view text);

// Shown to its last character, with nothing in it that could hide a part.
bool isCompleteCommand(std::string_view text);

} // namespace NativeApprovalClassifier
} // namespace notch
