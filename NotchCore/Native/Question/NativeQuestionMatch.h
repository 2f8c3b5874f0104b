// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

namespace notch {

// The one question card on screen: the ids of its parts, its title and its place among the pages.
// The options' texts are never taken out of the tree.
struct NativeQuestionMatch {
    std::string windowID;
    std::string containerID;
    std::string anchorID; // The button that skips all questions.
    std::vector<std::string> contextNodeIDs; // The header's nodes, each before its children.
    std::string title; // As read.
    int currentPage = 0;
    int totalPages = 0;

    bool operator==(const NativeQuestionMatch&) const = default;
};

} // namespace notch
