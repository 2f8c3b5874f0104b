// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <condition_variable>
#include <functional>
#include <list>
#include <mutex>
#include <string>
#include <thread>
#include <utility>

namespace notch {

// Runs pieces of work one after another, in the order given, on one thread of its own.
// The destructor runs what is still queued and then joins; it must not run on the queue's thread.
class SerialQueue {
public:
    using Work = std::function<void()>;
    // A piece of work with the memory that its place in the queue takes.
    using Prepared = std::list<Work>;

    // `name` is shown by debuggers, cut to the 15 bytes that pthread_setname_np(3) takes.
    explicit SerialQueue(const std::string& name);
    ~SerialQueue();
    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;

    // Any thread; returns at once.
    void async(Work work) { async(prepared(std::move(work))); }
    // In two steps, for work that must not get lost: once it is prepared, nothing can fail.
    static Prepared prepared(Work work);
    void async(Prepared work) noexcept;
    // Any thread but the queue's own; returns when `work` has run.
    void sync(const Work& work);

private:
    void run();

    std::mutex mutex_;
    // Guarded by mutex_:
    std::list<Work> queued_;
    bool closing_ = false;

    std::condition_variable changed_;
    std::thread thread_;
};

} // namespace notch
