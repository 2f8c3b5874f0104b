// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

namespace notch {

// What a finished scan may be trusted for. The one place that judges this.
struct NativeScanCoverage {
    int primaryWindowCount = -1; // Windows that the host lists; -1 if it was not told.
    int scannedRootCount = 0; // Windows that were read.
    bool treeComplete = false; // Every read succeeded within all budgets.
    bool questionTreeComplete = false; // No node's children were in doubt.
    // The host lists no window, and the one root is the window that it calls main and focused.
    bool agreedQuestionFallback = false;

    // A card of this scan may be offered, and its absence believed.
    bool approvalComplete() const;
    // A question that was seen may be believed.
    bool questionPositiveComplete() const;
    // That no question was seen may be believed.
    bool questionAbsenceComplete() const;

    // What is known about the window that takes the place of the host's empty list.
    struct Fallback {
        int primaryWindowCount = -1;
        std::int32_t targetPID = 0;
        std::int32_t mainPID = 0;
        std::int32_t focusedPID = 0;
        bool mainIsWindow = false;
        bool focusedIsWindow = false;
        bool sameIdentity = false; // Both are one element.
        bool withinBudget = false;
    };
    static bool acceptsQuestionFallback(const Fallback& fallback);

    bool operator==(const NativeScanCoverage&) const = default;

private:
    bool coversListedWindows() const;
};

} // namespace notch
