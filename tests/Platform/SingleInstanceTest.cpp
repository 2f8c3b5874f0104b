// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/SingleInstance/SingleInstance.h"

#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <csignal>
#include <optional>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace notch {
namespace {

class SingleInstanceTest : public testing::Test {
protected:
    bool otherRuns() const { return SingleInstance(directory_.path()).otherRuns(); }
    std::string lock() const
    {
        return directory_ / ("local.quillmoss.notch-" + std::to_string(::getuid()) + ".lock");
    }

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

TEST_F(SingleInstanceTest, aKilledHolderLeavesThePlaceFree)
{
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        const SingleInstance held(directory_.path());
        [[maybe_unused]] const auto told = ::write(ready[1], "x", 1);
        for (;;)
            ::pause();
    }
    char told = 0;
    ASSERT_EQ(::read(ready[0], &told, 1), 1);
    EXPECT_TRUE(otherRuns());
    ::kill(child, SIGKILL);
    ASSERT_EQ(::waitpid(child, nullptr, 0), child);
    EXPECT_FALSE(otherRuns());
    ::close(ready[0]);
    ::close(ready[1]);
}

TEST_F(SingleInstanceTest, aPlaceThatCannotBeClaimedKeepsNobodyOut)
{
    ASSERT_EQ(::symlink("/dev/null", lock().c_str()), 0);
    EXPECT_FALSE(otherRuns()) << "a link is not followed";
    ::unlink(lock().c_str());
    ASSERT_EQ(::mkfifo(lock().c_str(), 0600), 0);
    EXPECT_FALSE(otherRuns());
    EXPECT_FALSE(SingleInstance(directory_ / "absent").otherRuns());
}

} // namespace
} // namespace notch
