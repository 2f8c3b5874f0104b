// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Foundation/SerialQueue.h"

#include <array>
#include <gmock/gmock.h>
#include <thread>
#include <vector>

namespace notch {
namespace {

TEST(SerialQueue, runsWorkOfEachThreadInItsOrder)
{
    constexpr int perThread = 1000;
    std::array<int, 4> next{}; // Only touched on the queue.
    {
        SerialQueue queue("notch-test.serial-queue");
        std::vector<std::jthread> threads;
        for (int& mine : next)
            threads.emplace_back([&queue, &mine] {
                for (int i = 0; i < perThread; ++i)
                    queue.async([&mine, i] { EXPECT_EQ(i, mine++); });
            });
        threads.clear();
        queue.sync([&] { EXPECT_THAT(next, testing::Each(perThread)); });
        queue.async([&next] { next.front() = 0; });
    } // What was queued runs before the queue is gone.
    EXPECT_EQ(next.front(), 0);
}

} // namespace
} // namespace notch
