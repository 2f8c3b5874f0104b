// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Signals/TerminationSignals.h"

#include "support/EventLoop.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace notch {
namespace {

TEST(TerminationSignalsTest, eachSignalIsOneCallFromTheEventLoop)
{
    EventLoop loop;
    int calls = 0;
    const TerminationSignals signals([&] { ++calls; });
    ::raise(SIGTERM);
    ::raise(SIGINT);
    ::raise(SIGTERM);
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(loop.runUntil([&] { return calls == 3; })) << calls;
}

TEST(TerminationSignalsTest, aProgramStartedMeanwhileCanStillBeEnded)
{
    EventLoop loop;
    const TerminationSignals signals([] {});
    const pid_t child = ::fork();
    if (child == 0) {
        ::execlp("sh", "sh", "-c", "kill -TERM $$; exit 7", nullptr);
        ::_exit(127);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status)) << WEXITSTATUS(status);
}

} // namespace
} // namespace notch
