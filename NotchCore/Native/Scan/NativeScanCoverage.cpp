// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Scan/NativeScanCoverage.h"

namespace notch {
namespace {

constexpr int maxWindows = 12;

} // namespace

bool NativeScanCoverage::coversListedWindows() const
{
    return !agreedQuestionFallback && primaryWindowCount >= 1 && primaryWindowCount <= maxWindows
        && scannedRootCount == primaryWindowCount;
}

bool NativeScanCoverage::approvalComplete() const
{
    return treeComplete && coversListedWindows();
}

bool NativeScanCoverage::questionAbsenceComplete() const
{
    return treeComplete && questionTreeComplete && coversListedWindows();
}

bool NativeScanCoverage::questionPositiveComplete() const
{
    const bool coversFallback =
        agreedQuestionFallback && primaryWindowCount == 0 && scannedRootCount == 1;
    return treeComplete && questionTreeComplete && (coversListedWindows() || coversFallback);
}

bool NativeScanCoverage::acceptsQuestionFallback(const Fallback& fallback)
{
    return fallback.primaryWindowCount == 0 && fallback.targetPID > 0
        && fallback.targetPID == fallback.mainPID && fallback.targetPID == fallback.focusedPID
        && fallback.mainIsWindow && fallback.focusedIsWindow && fallback.sameIdentity
        && fallback.withinBudget;
}

} // namespace notch
