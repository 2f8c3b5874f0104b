// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/Question/QuestionGeometry.h"
#include "Native/Tree/NativeApprovalNode.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace notch {

// A question card's line of title and paging controls, read from seven neighbours.
struct QuestionHeader {
    std::string_view title; // Points into the tree.
    int currentPage = 0;
    int totalPages = 0;
    QuestionHeaderFrames frames;
};

// Nothing unless the seven are title, previous, current, separator, total, next and skip, and the
// two paging buttons are enabled exactly where there is a page to go to.
std::optional<QuestionHeader> readQuestionHeader(std::span<const NativeApprovalNode, 7> nodes);

} // namespace notch
