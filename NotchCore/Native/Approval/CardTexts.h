// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/Tree/NativeApprovalNode.h"

#include <string>
#include <string_view>
#include <vector>

namespace notch {

// A control character other than tab and line breaks, or a format character: the text may not read
// as it looks.
bool hasUnsafeScalars(std::string_view text);

// What one static text shows: its texts that are not blank, untrimmed, each once, sorted.
std::vector<std::string_view> ownTexts(const NativeApprovalNode& staticText);

// The static texts that show something under the node, itself included, in order. Nothing under a
// button or under another static text counts; hidden ones do.
std::vector<const NativeApprovalNode*> staticTextNodes(const NativeApprovalNode& node);
// What these show. The same words in two nodes are two entries.
std::vector<std::string_view> staticTexts(const NativeApprovalNode& node);

// The card's first line, with a count that has reached its threshold.
bool isBulkSummary(std::string_view text);

} // namespace notch
