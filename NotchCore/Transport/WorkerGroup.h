// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <atomic>
#include <functional>
#include <list>
#include <mutex>
#include <thread>

namespace notch {

// Threads that end by themselves, each joined by its owner: this group.
class WorkerGroup {
public:
    using Work = std::function<void()>;

    WorkerGroup() = default;
    ~WorkerGroup() { wait(); }
    WorkerGroup(const WorkerGroup&) = delete;
    WorkerGroup& operator=(const WorkerGroup&) = delete;

    // Runs the work on a thread of its own. False when the system has no thread or memory for it. A
    // worker of this group may start others.
    [[nodiscard]] bool start(Work work);
    // Returns when no worker runs, with no limit on time. Not from a worker.
    void wait();

private:
    struct Worker {
        std::atomic<bool> finished = false;
        std::thread thread;
    };

    std::list<Worker> takeFinished();
    bool launch(Work work);

    std::mutex mutex_;
    // Guarded by mutex_:
    std::list<Worker> workers_;
};

} // namespace notch
