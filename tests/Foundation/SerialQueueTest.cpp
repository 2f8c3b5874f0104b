// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Foundation/SerialQueue.h"

#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace notch {
namespace {

TEST(SerialQueue, runsWorkOfEachThreadInItsOrder)
{
    constexpr int perThread = 1000;
    constexpr std::size_t total = 4000;
    std::vector<std::pair<int, int>> seen; // Only touched on the queue.
    {
        SerialQueue queue("notch-test.serial-queue");
        std::vector<std::thread> threads;
        for (int thread = 0; thread < 4; ++thread) {
            threads.emplace_back([&, thread] {
                for (int i = 0; i < perThread; ++i)
                    queue.async([&seen, thread, i] { seen.emplace_back(thread, i); });
            });
        }
        for (auto& thread : threads)
            thread.join();
        std::size_t before = 0;
        queue.sync([&] { before = seen.size(); });
        EXPECT_EQ(before, total);
        for (int i = perThread; i < 2 * perThread; ++i)
            queue.async([&seen, i] { seen.emplace_back(0, i); });
    } // What was queued runs before the queue is gone.
    ASSERT_EQ(seen.size(), total + perThread);
    std::vector<int> next(4, 0);
    for (const auto& [thread, i] : seen)
        EXPECT_EQ(i, next[static_cast<std::size_t>(thread)]++);
}

} // namespace
} // namespace notch
