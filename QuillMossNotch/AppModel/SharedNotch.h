// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/MainQueue.h"

#include <functional>

namespace notch {

// What the model grants its reminders. They may open and close the notch while it is free;
// requests, the selection, receipts and the arming of decisions are out of their reach. Main
// thread.
class SharedNotch {
public:
    using Poster = std::function<void(MainQueue::Work)>;

    // Neither a request nor a receipt needs it.
    virtual bool isFree() const = 0;
    virtual bool isOpen() const = 0;
    virtual bool pointerIsInside() const = 0;
    // No hover and no auto-collapse that was planned moves it any more.
    virtual void keepAsItIs() = 0;
    virtual void open() = 0;
    // As the person does it: the reminder on show counts as seen.
    virtual void collapse() = 0;
    // Closes it because what it showed is gone; whatever waits still has not been seen.
    virtual void withdraw() = 0;
    // Each reminder looks anew whether the notch is its own.
    virtual void refreshReminders() = 0;
    // The work is one operation of the model, published when it is done.
    [[nodiscard]] virtual DelayedWork after(Seconds delay, MainQueue::Work work) = 0;
    // A way to the main thread for any thread and any time: the work runs there later, as one
    // operation of the model, and not at all once the model is gone.
    virtual Poster poster() = 0;

protected:
    ~SharedNotch() = default;
};

} // namespace notch
