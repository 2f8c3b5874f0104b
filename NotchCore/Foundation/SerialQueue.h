// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace notch {

// Runs pieces of work one after another, in the order given, on one thread of its own.
// The destructor runs what is still queued and then joins; it must not run on the queue's thread.
class SerialQueue {
public:
    using Work = std::function<void()>;

    // `name` is shown by debuggers, cut to the 15 bytes that pthread_setname_np(3) takes.
    explicit SerialQueue(const std::string& name);
    ~SerialQueue();
    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;

    // Any thread; returns at once.
    void async(Work work);
    // Any thread but the queue's own; returns when `work` has run.
    void sync(const Work& work);

private:
    void run();

    std::mutex mutex_;
    // Guarded by mutex_:
    std::deque<Work> queued_;
    bool closing_ = false;

    std::condition_variable changed_;
    std::thread thread_;
};

} // namespace notch
