// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/SingleInstance/SingleInstance.h"

#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace notch {
namespace {

class SingleInstanceTest : public testing::Test {
protected:
    bool otherRuns() const { return SingleInstance(directory_.path()).otherRuns(); }

    TemporaryDirectory directory_;
};

TEST_F(SingleInstanceTest, onlyTheFirstHoldsThePlaceUntilItEnds)
{
    std::optional<SingleInstance> first(directory_.path());
    EXPECT_FALSE(first->otherRuns());
    EXPECT_TRUE(otherRuns());
    EXPECT_TRUE(otherRuns()) << "a second copy must not take the place from the first";
    first.reset();
    EXPECT_FALSE(otherRuns());
}

TEST_F(SingleInstanceTest, aPlaceThatCannotBeClaimedKeepsNobodyOut)
{
    const auto lock =
        directory_ / ("local.quillmoss.notch-" + std::to_string(::getuid()) + ".lock");
    ASSERT_EQ(::symlink((directory_ / "target").c_str(), lock.c_str()), 0);
    EXPECT_FALSE(otherRuns());
    EXPECT_NE(::access((directory_ / "target").c_str(), F_OK), 0) << "a link is not followed";
    ::unlink(lock.c_str());
    ASSERT_EQ(::mkfifo(lock.c_str(), 0600), 0);
    const SingleInstance squatter(directory_.path());
    EXPECT_FALSE(otherRuns());
    EXPECT_FALSE(SingleInstance(directory_ / "absent").otherRuns());
}

} // namespace
} // namespace notch
