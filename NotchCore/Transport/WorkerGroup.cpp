// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Transport/WorkerGroup.h"

#include <new>
#include <system_error>
#include <utility>

namespace notch {
namespace {

template <class Workers> void join(Workers& workers)
{
    for (auto& worker : workers)
        worker.thread.join();
}

} // namespace

bool WorkerGroup::start(Work work)
{
    auto finished = takeFinished();
    join(finished);
    return launch(std::move(work));
}

void WorkerGroup::wait()
{
    for (;;) {
        std::list<Worker> workers;
        {
            const std::lock_guard lock(mutex_);
            workers.swap(workers_);
        }
        if (workers.empty())
            return;
        join(workers); // A worker may start another one meanwhile.
    }
}

std::list<WorkerGroup::Worker> WorkerGroup::takeFinished()
{
    std::list<Worker> finished;
    const std::lock_guard lock(mutex_);
    for (auto worker = workers_.begin(); worker != workers_.end();) {
        const auto next = std::next(worker);
        if (worker->finished)
            finished.splice(finished.end(), workers_, worker);
        worker = next;
    }
    return finished;
}

bool WorkerGroup::launch(Work work)
{
    std::list<Worker> one;
    try {
        auto& worker = one.emplace_back();
        const std::lock_guard lock(mutex_); // So that no wait() overlooks a running thread.
        worker.thread = std::thread([&worker, work = std::move(work)] {
            work();
            worker.finished = true;
        });
        workers_.splice(workers_.end(), one);
        return true;
    } catch (const std::system_error&) {
        return false;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

} // namespace notch
