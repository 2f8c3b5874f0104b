// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

#include <functional>
#include <memory>

class QSocketNotifier;
struct sd_bus;

namespace notch {

// Hears on the session bus when a screen locker comes on and goes off. Some draw their screen
// within the compositor, where no window of theirs lies above ours. Nothing is told without such a
// bus. Main thread.
class SessionLock {
public:
    // `changed` runs from the event loop, at the beginning and at the end of each lock.
    explicit SessionLock(std::function<void()> changed);
    ~SessionLock();
    Q_DISABLE_COPY_MOVE(SessionLock)

private:
    void processBus();

    std::function<void()> changed_;
    std::unique_ptr<sd_bus, sd_bus* (*)(sd_bus*)> bus_; // Null where there is none.
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace notch
