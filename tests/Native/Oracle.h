// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/Approval/NativeApprovalMatch.h"
#include "Native/Question/NativeQuestionMatch.h"
#include "Native/Tree/NativeApprovalNode.h"

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace notch::oracle {

// The rules a second time, slow and without a shortcut, on the call stack and without ICU, so that
// a mistake in the one is hardly the same mistake in the other. For small trees.

using Node = NativeApprovalNode;
using Nodes = std::vector<const Node*>;

std::optional<NativeApprovalMatch> approval(const std::vector<Node>& roots);
bool recognizesButtons(const std::vector<Node>& roots);
std::optional<NativeQuestionMatch> question(const std::vector<Node>& roots);

// Shared by both.

std::string anyBlank(); // As a regular expression over bytes.
std::string trim(std::string text);
bool unsafe(const std::string& text, std::string_view allowedControls);
std::set<std::string> distinctTexts(const Node& node); // Empty ones left out.
bool usable(const std::optional<ScreenRect>& frame);
bool contains(const ScreenRect& outer, const ScreenRect& inner, double grown = 0);
std::vector<Nodes> paths(const Node& node); // To each node in it, in order.
Nodes flatten(const Node& node);

} // namespace notch::oracle
