// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/MainQueue.h"
#include "Foundation/Time.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

namespace notch {

// The clock and the main queue of a rehearsal: time passes only in advance(), and everything due on
// the way runs at its own moment.
class VirtualTime final : public Clock, public MainQueue {
public:
    VirtualTime() = default;
    // Works run at multiples of `grain` only, a power of two, and so never early.
    explicit VirtualTime(Seconds grain)
        : grain_(grain.count())
    {
    }

    Date now() const override { return Date{uptime_ + bootedAt_}; }
    Uptime uptime() const override { return Uptime{uptime_}; }

    void post(Work work) override
    {
        const std::scoped_lock lock(mutex_);
        posted_.push_back(std::move(work));
    }

    DelayedWork after(Seconds delay, Work work) override
    {
        const double due = uptime_ + delay.count();
        const Key key{
            grain_ > 0 ? std::ceil(due / grain_ - rounding) * grain_ : due, nextSerial_++};
        delayed_.emplace(key, Delayed{delay, std::move(work)});
        return DelayedWork([this, key] { delayed_.erase(key); });
    }

    // Runs what was posted, and what that posts, at this moment.
    void runPosted()
    {
        for (auto works = takePosted(); !works.empty(); works = takePosted()) {
            for (const auto& work : works)
                work();
        }
    }

    void advance(Seconds time)
    {
        const double end = uptime_ + time.count();
        runPosted();
        while (!delayed_.empty() && delayed_.begin()->first.first <= end) {
            const auto due = delayed_.extract(delayed_.begin());
            uptime_ = due.key().first;
            due.mapped().work();
            runPosted();
        }
        uptime_ = end;
    }

    // The wall clock is set; the monotonic one does not notice.
    void setWallClock(Seconds by) { bootedAt_ += by.count(); }

    // Delayed works that still wait.
    std::size_t timers() const { return delayed_.size(); }
    // Calls `visit` with how long each has still to wait, and was to wait in all, in their order.
    template <class Visit> void visitTimers(Visit visit) const
    {
        for (const auto& [key, delayed] : delayed_)
            visit(Seconds{key.first - uptime_}, delayed.delay);
    }

private:
    struct Delayed {
        Seconds delay;
        Work work;
    };
    using Key = std::pair<double, std::uint64_t>; // Due at; in the order of the calls.

    std::vector<Work> takePosted()
    {
        const std::scoped_lock lock(mutex_);
        return std::exchange(posted_, {});
    }

    static constexpr double rounding = 1e-6; // Of a sum of seconds, in grains.

    const double grain_ = 0;
    // As large as dates are today, so that their rounding is that of the real clock.
    double bootedAt_ = 817000000;
    double uptime_ = 1000;
    std::map<Key, Delayed> delayed_;
    std::uint64_t nextSerial_ = 0;

    std::mutex mutex_;
    // Guarded by mutex_:
    std::vector<Work> posted_;
};

} // namespace notch
