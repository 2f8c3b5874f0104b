// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Scan/NativeScanCoverage.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace notch {
namespace {

TEST(NativeScanCoverage, trustsAScanForWhatItCovered)
{
    const std::string all = "approval question absence";
    const auto trusted = [](const NativeScanCoverage& coverage) {
        std::string uses;
        for (const auto& [use, holds] : {std::pair{"approval", coverage.approvalComplete()},
                 std::pair{"question", coverage.questionPositiveComplete()},
                 std::pair{"absence", coverage.questionAbsenceComplete()}})
            if (holds)
                uses += (uses.empty() ? "" : " ") + std::string(use);
        return uses;
    };
    // Windows, roots, complete tree, no doubtful children, agreed fallback.
    EXPECT_EQ(trusted({1, 1, true, true, false}), all);
    EXPECT_EQ(trusted({12, 12, true, true, false}), all);
    EXPECT_EQ(trusted({1, 1, true, false, false}), "approval");
    EXPECT_EQ(trusted({0, 1, true, true, true}), "question");
    const std::vector<NativeScanCoverage> untrusted{{-1, 0, false, false, false},
        {13, 13, true, true, false}, {0, 0, true, true, false}, {-1, -1, true, true, false},
        {2, 1, true, true, false}, {1, 2, true, true, false}, {1, 1, false, true, false},
        {1, 1, true, true, true}, {0, 1, true, true, false}, {0, 1, false, true, true},
        {0, 1, true, false, true}, {0, 2, true, true, true}};
    for (std::size_t row = 0; row < untrusted.size(); ++row)
        EXPECT_EQ(trusted(untrusted[row]), "") << row;
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
