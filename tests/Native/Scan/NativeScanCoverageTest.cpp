// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Scan/NativeScanCoverage.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>

namespace notch {
namespace {

TEST(NativeScanCoverage, trustsAScanForWhatItCovered)
{
    // Windows, roots, complete tree, complete question tree, agreed fallback; then what it may be
    // trusted for: a an approval, p a question seen, n no question seen.
    const std::map<std::string, std::string> trusted{{"-1 0 0 0 0", ""}, {"1 1 1 1 0", "apn"},
        {"12 12 1 1 0", "apn"}, {"13 13 1 1 0", ""}, {"0 0 1 1 0", ""}, {"-1 -1 1 1 0", ""},
        {"2 1 1 1 0", ""}, {"1 2 1 1 0", ""}, {"1 1 0 1 0", ""}, {"1 1 1 0 0", "a"},
        {"1 1 1 1 1", ""}, {"0 1 1 1 1", "p"}, {"0 1 1 1 0", ""}, {"0 1 0 1 1", ""},
        {"0 1 1 0 1", ""}, {"0 2 1 1 1", ""}};
    for (const auto& [scan, wanted] : trusted) {
        NativeScanCoverage coverage;
        std::istringstream(scan) >> coverage.primaryWindowCount >> coverage.scannedRootCount
            >> coverage.treeComplete >> coverage.questionTreeComplete
            >> coverage.agreedQuestionFallback;
        EXPECT_EQ(std::string(coverage.approvalComplete() ? "a" : "")
                      + (coverage.questionPositiveComplete() ? "p" : "")
                      + (coverage.questionAbsenceComplete() ? "n" : ""),
            wanted)
            << scan;
    }
}

TEST(NativeScanCoverage, acceptsOneWindowThatIsMainAndFocused)
{
    const auto accepts = NativeScanCoverage::acceptsQuestionFallback;
    EXPECT_TRUE(accepts({0, 7, 7, 7, true, true, true, true}));
    EXPECT_FALSE(accepts({1, 7, 7, 7, true, true, true, true}));
    EXPECT_FALSE(accepts({-1, 7, 7, 7, true, true, true, true}));
    EXPECT_FALSE(accepts({0, 0, 0, 0, true, true, true, true}));
    EXPECT_FALSE(accepts({0, 7, 8, 7, true, true, true, true}));
    EXPECT_FALSE(accepts({0, 7, 7, 8, true, true, true, true}));
    EXPECT_FALSE(accepts({0, 7, 7, 7, false, true, true, true}));
    EXPECT_FALSE(accepts({0, 7, 7, 7, true, false, true, true}));
    EXPECT_FALSE(accepts({0, 7, 7, 7, true, true, false, true}));
    EXPECT_FALSE(accepts({0, 7, 7, 7, true, true, true, false}));
}

} // namespace
} // namespace notch
