// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>

namespace notch {

// A question that the host waits on, as the notch may show it. Read-only: nothing here answers it.
struct QuestionReminder {
    std::string flowID; // One for all pages of one question card.
    std::int32_t pid = 0; // The host's process.
    std::string title; // As shown.
    int currentPage = 0;
    int totalPages = 0;

    // Names a flow, a process, a title and a page that exists.
    bool isValid() const;

    bool operator==(const QuestionReminder&) const = default;
};

} // namespace notch
