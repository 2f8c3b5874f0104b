// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <utility>

namespace notch {

// What callbacks on other threads said, one line each, in order.
class Trace {
public:
    void add(std::string line)
    {
        const std::lock_guard lock(mutex_);
        lines_.push_back(std::move(line));
        changed_.notify_one();
    }

    // The next line that was not taken yet; "nothing" when none comes.
    std::string next()
    {
        std::unique_lock lock(mutex_);
        if (!changed_.wait_for(lock, ample, [this] { return !lines_.empty(); }))
            return "nothing";
        auto line = std::move(lines_.front());
        lines_.pop_front();
        return line;
    }
    bool empty()
    {
        const std::lock_guard lock(mutex_);
        return lines_.empty();
    }

private:
    static constexpr std::chrono::seconds ample{30};

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<std::string> lines_;
};

} // namespace notch
