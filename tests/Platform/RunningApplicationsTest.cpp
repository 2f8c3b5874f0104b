// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/RunningApplications/RunningApplications.h"

#include "support/WaitUntil.h"
#include "support/x11/OtherProgram.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace notch {
namespace {

// This process plays the host.
class RunningApplicationsTest : public testing::Test {
protected:
    // pid, then what holds: "active", "hidden".
    using Seen = std::vector<std::string>;
    Seen seen() const
    {
        Seen result;
        for (const auto& application : applications_.running())
            result.push_back((application.pid == ::getpid() ? "self" : "other")
                             + std::string(application.isActive ? " active" : "")
                             + (application.isHidden ? " hidden" : "")
                             + (application.isTerminated ? " terminated" : ""));
        return result;
    }
    testing::AssertionResult becomes(const Seen& wanted)
    {
        if (waitUntil([&] { return seen() == wanted; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << testing::PrintToString(seen());
    }

    OtherProgram program_;
    RunningApplications applications_{{"quillmoss", "Quillmoss-AI"}};
};

TEST_F(RunningApplicationsTest, theHostIsKnownByItsWindowsClassOrApplicationID)
{
    program_.openWindow("quillmoss2");
    const auto quiet = program_.openWindow("other");
    ASSERT_TRUE(waitUntil([&] { return applications_.windows(::getpid()).size() == 2; }));
    EXPECT_EQ(seen(), Seen{});
    program_.setText(quiet, "_GTK_APPLICATION_ID", "QuillMoss");
    EXPECT_TRUE(becomes({"self active"}));
    program_.setText(quiet, "_GTK_APPLICATION_ID", "");
    program_.openWindow("QuillMoss-ai");
    EXPECT_TRUE(becomes({"self active"}));
}

TEST_F(RunningApplicationsTest, aHostIsHiddenWhileAllItsWindowsAreAndActiveWithItsDialogs)
{
    const auto first = program_.openWindow("quillmoss");
    const auto second = program_.openWindow("other");
    EXPECT_TRUE(becomes({"self active"}));
    program_.iconify(first);
    program_.iconify(second);
    EXPECT_TRUE(becomes({"self hidden"}));
    EXPECT_TRUE(applications_.activate(::getpid()));
    EXPECT_TRUE(becomes({"self active"}));
    EXPECT_FALSE(applications_.activate(1));
}

TEST_F(RunningApplicationsTest, theServerTellsWhoseAWindowIsWhateverTheWindowClaims)
{
    const auto mine = program_.openWindow("quillmoss");
    program_.setNumber(mine, "_NET_WM_PID", 1);
    EXPECT_TRUE(becomes({"self active"}));
    const pid_t child = ::fork();
    if (child == 0) {
        OtherProgram other;
        other.openWindow("quillmoss");
        other.setNumber(other.openWindow("elsewhere"), "WM_TRANSIENT_FOR", mine);
        ::pause();
    }
    // The child's dialog has the keyboard, and belongs to a window of this process.
    EXPECT_TRUE(becomes({"self active", "other active"}));
    ::kill(child, SIGKILL);
    EXPECT_TRUE(becomes({"self active"}));
    ::waitpid(child, nullptr, 0);
}

TEST_F(RunningApplicationsTest, aZombieWhoseConnectionAnotherProcessHoldsIsTerminated)
{
    const pid_t child = ::fork();
    if (child == 0) {
        OtherProgram other;
        other.openWindow("quillmoss");
        if (::fork() != 0)
            ::_exit(0);
        ::alarm(2); // Ends this process.
        ::pause();
    }
    EXPECT_TRUE(becomes({"other active terminated"}));
    ::waitpid(child, nullptr, 0);
    EXPECT_TRUE(becomes({"other active terminated"}));
}

TEST(RunningApplicationsWithoutServerTest, nothingRuns)
{
    EXPECT_TRUE(RunningApplications({"quillmoss"}, ":no").running().empty());
}

} // namespace
} // namespace notch
