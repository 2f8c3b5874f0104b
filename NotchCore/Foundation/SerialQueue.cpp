// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Foundation/SerialQueue.h"

#include <cassert>
#include <future>
#include <pthread.h>

namespace notch {

SerialQueue::SerialQueue(const std::string& name)
    : thread_([this] { run(); })
{
    constexpr std::size_t longestThreadName = 15;
    ::pthread_setname_np(thread_.native_handle(), name.substr(0, longestThreadName).c_str());
}

SerialQueue::~SerialQueue()
{
    {
        const std::lock_guard lock(mutex_);
        closing_ = true;
    }
    changed_.notify_one();
    thread_.join();
}

SerialQueue::Prepared SerialQueue::prepared(Work work)
{
    Prepared list;
    list.push_back(std::move(work));
    return list;
}

void SerialQueue::async(Prepared work) noexcept
{
    {
        const std::lock_guard lock(mutex_);
        queued_.splice(queued_.end(), work);
    }
    changed_.notify_one();
}

void SerialQueue::sync(const Work& work)
{
    assert(std::this_thread::get_id() != thread_.get_id());
    std::promise<void> done;
    async([&] {
        work();
        done.set_value();
    });
    done.get_future().wait();
}

void SerialQueue::run()
{
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return closing_ || !queued_.empty(); });
        if (queued_.empty())
            return;
        {
            Prepared next;
            next.splice(next.end(), queued_, queued_.begin());
            lock.unlock();
            next.front()();
        } // What the work captured is gone before the next one starts.
        lock.lock();
    }
}

} // namespace notch
