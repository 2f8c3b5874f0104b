// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/NativeApprovalMatch.h"
#include "Native/NativeApprovalNode.h"
#include "Native/NativeQuestionMatch.h"

#include <optional>
#include <string>
#include <vector>

namespace notch::oracle {

// The rules a second time, slow and without a shortcut, on the call stack and without ICU, so that
// a mistake in the one is hardly the same mistake in the other. For small trees.

using Nodes = std::vector<const NativeApprovalNode*>;

std::optional<NativeApprovalMatch> approval(const std::vector<NativeApprovalNode>& roots);
bool recognizesButtons(const std::vector<NativeApprovalNode>& roots);
std::optional<NativeQuestionMatch> question(const std::vector<NativeApprovalNode>& roots);

// Shared by both.

// Any number of bytes at the front of `rest` that are blank; 0 if it starts with something else.
std::size_t blankAt(std::string_view rest);
std::string trim(std::string_view text);
std::vector<std::string> distinct(const std::vector<std::string>& texts);
bool usable(const std::optional<ScreenRect>& frame);
bool contains(const ScreenRect& outer, const ScreenRect& inner, double grown = 0);
void flatten(const NativeApprovalNode& node, Nodes& into);

} // namespace notch::oracle
