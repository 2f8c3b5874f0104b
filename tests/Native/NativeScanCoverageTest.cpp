// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/NativeScanCoverage.h"

#include <gtest/gtest.h>

#include <string>

namespace notch {
namespace {

TEST(NativeScanCoverage, trustsAScanForWhatItCovered)
{
    struct Row {
        NativeScanCoverage coverage; // windows, roots, tree, question tree, fallback
        std::string trusted; // a: approval, p: a question seen, n: no question seen
    };
    for (const auto& [coverage, trusted] : {
             Row{{}, ""},
             Row{{1, 1, true, true, false}, "apn"},
             Row{{12, 12, true, true, false}, "apn"},
             Row{{13, 13, true, true, false}, ""},
             Row{{0, 0, true, true, false}, ""},
             Row{{-1, -1, true, true, false}, ""},
             Row{{2, 1, true, true, false}, ""},
             Row{{1, 2, true, true, false}, ""},
             Row{{1, 1, false, true, false}, ""},
             Row{{1, 1, true, false, false}, "a"},
             Row{{1, 1, true, true, true}, ""},
             Row{{0, 1, true, true, true}, "p"},
             Row{{0, 1, true, true, false}, ""},
             Row{{0, 1, false, true, true}, ""},
             Row{{0, 1, true, false, true}, ""},
             Row{{0, 2, true, true, true}, ""},
         }) {
        EXPECT_EQ(std::string(coverage.approvalComplete() ? "a" : "")
                      + (coverage.questionPositiveComplete() ? "p" : "")
                      + (coverage.questionAbsenceComplete() ? "n" : ""),
            trusted)
            << coverage.primaryWindowCount << ' ' << coverage.scannedRootCount;
    }
}

TEST(NativeScanCoverage, acceptsOneWindowThatIsMainAndFocused)
{
    using Fallback = NativeScanCoverage::Fallback;
    const Fallback good{0, 7, 7, 7, true, true, true, true};
    EXPECT_TRUE(NativeScanCoverage::acceptsQuestionFallback(good));
    for (const auto& bad : {
             Fallback{1, 7, 7, 7, true, true, true, true},
             Fallback{-1, 7, 7, 7, true, true, true, true},
             Fallback{0, 0, 0, 0, true, true, true, true},
             Fallback{0, 7, 8, 7, true, true, true, true},
             Fallback{0, 7, 7, 8, true, true, true, true},
             Fallback{0, 7, 7, 7, false, true, true, true},
             Fallback{0, 7, 7, 7, true, false, true, true},
             Fallback{0, 7, 7, 7, true, true, false, true},
             Fallback{0, 7, 7, 7, true, true, true, false},
         })
        EXPECT_FALSE(NativeScanCoverage::acceptsQuestionFallback(bad));
}

} // namespace
} // namespace notch
