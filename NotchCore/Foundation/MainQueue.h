// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Time.h"

#include <functional>
#include <utility>

namespace notch {

// Work that will run once unless this handle is cancelled, replaced or destroyed first.
class DelayedWork {
public:
    DelayedWork() = default;
    explicit DelayedWork(std::function<void()> cancel)
        : cancel_(std::move(cancel))
    {
    }
    DelayedWork(DelayedWork&& other) noexcept
        : cancel_(std::exchange(other.cancel_, nullptr))
    {
    }
    DelayedWork& operator=(DelayedWork&& other) noexcept
    {
        if (this != &other) {
            cancel();
            cancel_ = std::exchange(other.cancel_, nullptr);
        }
        return *this;
    }
    ~DelayedWork() { cancel(); }

    // After this the work does not run. Harmless when it has run.
    void cancel()
    {
        if (const auto cancel = std::exchange(cancel_, nullptr))
            cancel();
    }

private:
    std::function<void()> cancel_;
};

// The main thread's queue: an event loop in the application, virtual time in tests.
class MainQueue {
public:
    using Work = std::function<void()>;

    virtual ~MainQueue() = default;

    // Any thread. Runs on the main thread, later, in the order of the posts.
    virtual void post(Work work) = 0;
    // Main thread only. Runs there no earlier than `delay` from now.
    [[nodiscard]] virtual DelayedWork after(Seconds delay, Work work) = 0;
};

} // namespace notch
