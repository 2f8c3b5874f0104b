// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Monitor/TickingQueue.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <future>
#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>

namespace notch {
namespace {

constexpr std::size_t longestThreadName = 15; // pthread_setname_np(3)

} // namespace

TickingQueue::TickingQueue(const std::string& name, Ticks ticks)
    : ticks_(std::move(ticks))
    , wake_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    for (auto* const source : ticks_.changes)
        source->changesDescriptor(); // From here on; a change during the first tick counts.
    thread_ = std::thread([this] { run(); });
    ::pthread_setname_np(thread_.native_handle(), name.substr(0, longestThreadName).c_str());
}

TickingQueue::~TickingQueue()
{
    {
        const std::lock_guard lock(mutex_);
        closing_ = true;
    }
    wake();
    thread_.join();
}

void TickingQueue::wake() const
{
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(wake_.get(), &one, sizeof one);
}

void TickingQueue::async(Work work)
{
    {
        const std::lock_guard lock(mutex_);
        queued_.push_back(std::move(work));
    }
    wake();
}

void TickingQueue::sync(const Work& work)
{
    if (std::this_thread::get_id() == thread_.get_id()) {
        work();
        return;
    }
    std::promise<void> done;
    async([&] {
        work();
        done.set_value();
    });
    done.get_future().wait();
}

void TickingQueue::setTicking(bool on)
{
    ticking_ = on;
    resting_ = false;
    due_ = Uptime::now();
}

void TickingQueue::run()
{
    for (;;) {
        if (runNext())
            continue;
        {
            const std::lock_guard lock(mutex_);
            if (closing_ && queued_.empty())
                return;
        }
        if (!tickIfDue())
            wait();
    }
}

bool TickingQueue::runNext()
{
    std::unique_lock lock(mutex_);
    if (queued_.empty())
        return false;
    const Work work = std::move(queued_.front());
    queued_.pop_front();
    lock.unlock();
    work();
    return true;
}

bool TickingQueue::tickIfDue()
{
    if (!ticking_ || resting_ || Uptime::now() < due_)
        return false;
    due_ = Uptime::now() + ticks_.interval;
    const bool mayRest = ticks_.tick();
    resting_ = ticking_ && mayRest;
    return true;
}

void TickingQueue::wait()
{
    std::vector<pollfd> waited{{wake_.get(), POLLIN, 0}};
    // While ticks are due anyway, changes need not wake anyone.
    if (resting_ && !takeChanges())
        for (auto* const source : ticks_.changes)
            waited.push_back({source->changesDescriptor(), POLLIN, 0});
    resting_ = waited.size() > 1
            && std::ranges::all_of(waited, [](const pollfd& source) { return source.fd >= 0; });
    ::poll(waited.data(), waited.size(), waitingTime());
    std::uint64_t woken = 0;
    [[maybe_unused]] const auto read = ::read(wake_.get(), &woken, sizeof woken);
    if (std::ranges::any_of(waited,
            [](const pollfd& source) { return (source.revents & (POLLHUP | POLLERR)) != 0; }))
        resting_ = false; // It is gone, and tells nothing any more.
}

// Of each source, so that none tells again of what has been seen.
bool TickingQueue::takeChanges()
{
    bool changed = false;
    for (auto* const source : ticks_.changes)
        changed = source->takeChanges() || changed;
    return changed;
}

int TickingQueue::waitingTime() const
{
    constexpr int forever = -1;
    if (!ticking_ || resting_)
        return forever;
    return std::max(0, static_cast<int>(std::ceil((due_ - Uptime::now()).count() * 1000)));
}

} // namespace notch
