// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/MainQueue/QtMainQueue.h"

#include "Foundation/Time.h"
#include "support/EventLoop.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace notch {
namespace {

class QtMainQueueTest : public testing::Test {
protected:
    std::function<void()> note(char mark)
    {
        return [this, mark] { trace_ += mark; };
    }

    EventLoop loop_;
    QtMainQueue queue_;
    std::string trace_;
};

TEST_F(QtMainQueueTest, postsOfAnyThreadRunLaterOnTheMainThreadInOrder)
{
    std::thread::id ran;
    std::thread([&] {
        queue_.post(note('a'));
        queue_.post([&] { ran = std::this_thread::get_id(); });
        queue_.post(note('b'));
    }).join();
    EXPECT_EQ(trace_, "");
    EXPECT_TRUE(loop_.runUntil([&] { return trace_ == "ab"; }));
    EXPECT_EQ(ran, std::this_thread::get_id());
}

TEST_F(QtMainQueueTest, delayedWorkRunsOnceNeverEarlyAndNotWithoutItsHandle)
{
    const auto begun = Uptime::now();
    Uptime ran;
    const auto work = queue_.after(Seconds{0.0205}, [&] {
        ran = Uptime::now();
        trace_ += 'x';
    });
    auto cancelled = queue_.after(Seconds{0.01}, note('c'));
    auto replaced = queue_.after(Seconds{0.01}, note('r'));
    {
        const auto dropped = queue_.after(Seconds{0.01}, note('d'));
    }
    cancelled.cancel();
    replaced = queue_.after(Seconds{0.06}, note('n'));
    EXPECT_TRUE(loop_.runUntil([&] { return trace_.ends_with('n'); }));
    EXPECT_EQ(trace_, "xn");
    EXPECT_GE((ran - begun).count(), 0.0205);
}

TEST_F(QtMainQueueTest, workMayReplaceTheHandleThatItRunsFrom)
{
    DelayedWork work;
    work = queue_.after(Seconds{0}, [&] {
        trace_ += '1';
        work = queue_.after(Seconds{0}, note('2'));
    });
    EXPECT_TRUE(loop_.runUntil([&] { return trace_ == "12"; })) << trace_;
}

TEST_F(QtMainQueueTest, nothingRunsAndNoHandleHurtsAfterTheQueue)
{
    DelayedWork work;
    {
        QtMainQueue brief;
        brief.post(note('p'));
        work = brief.after(Seconds{0}, note('t'));
    }
    loop_.runDue();
    work.cancel();
    EXPECT_EQ(trace_, "");
}

} // namespace
} // namespace notch
