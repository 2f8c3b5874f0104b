// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Time.h"
#include "Foundation/UniqueFd.h"
#include "Native/ChangeSource.h"

#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace notch {

// Runs work given to it and, while switched on, a tick at regular times, all on one thread of its
// own. After a tick that says so it rests: it sleeps without a time-out until something changes.
// The destructor ends the ticks, runs what is still queued and joins; not on the queue's thread.
class TickingQueue {
public:
    using Work = std::function<void()>;

    struct Ticks {
        Seconds interval{};
        std::function<bool()> tick; // True: the queue may rest.
        // What may end a rest; where one of them does not tell, there is none. Borrowed.
        std::vector<ChangeSource*> changes;
    };

    TickingQueue(const std::string& name, Ticks ticks);
    ~TickingQueue();
    TickingQueue(const TickingQueue&) = delete;
    TickingQueue& operator=(const TickingQueue&) = delete;

    // Any thread; returns when `work` has run. On the queue's own thread it runs at once.
    void sync(const Work& work);
    // The queue's thread only. On: the first tick follows the work that is running.
    void setTicking(bool on);

private:
    void async(Work work);
    void wake() const;
    void run();
    bool runNext();
    bool tickIfDue();
    void wait();
    bool takeChanges();
    int waitingTime() const;

    const Ticks ticks_;
    const UniqueFd wake_; // An eventfd.
    // The queue's thread only:
    bool ticking_ = false;
    bool resting_ = false;
    Uptime due_;

    std::mutex mutex_;
    // Guarded by mutex_:
    std::deque<Work> queued_;
    bool closing_ = false;

    std::thread thread_;
};

} // namespace notch
