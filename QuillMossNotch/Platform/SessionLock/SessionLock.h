// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <string>

class QSocketNotifier;
struct sd_bus;
struct sd_bus_message;
struct sd_bus_slot;

namespace notch {

// Hears on the session bus when a screen locker comes on and goes off. Some draw their screen
// within the compositor, where no window of theirs lies above ours. Nothing is told without such a
// bus.
//
// A locker can end without a word. While it counts as on, it is asked now and then, without waiting
// for it; one that says no, knows nothing of it, has left the bus or has not answered by the next
// time counts as off. Main thread.
class SessionLock {
public:
    static constexpr std::chrono::milliseconds patience{20'000}; // From one question to the next.

    // `changed` runs from the event loop, at the beginning and at the end of each lock.
    explicit SessionLock(
        std::function<void()> changed, std::chrono::milliseconds askEvery = patience);
    ~SessionLock();
    Q_DISABLE_COPY_MOVE(SessionLock)

    bool isLocked() const { return asking_.isActive(); }

private:
    // The one that has locked the session, as the bus knows it.
    struct Locker {
        std::string name;
        std::string path;
        std::string interface;
    };

    void processBus();
    void heard(sd_bus_message* signal);
    void answered(sd_bus_message* answer);
    void ask();
    void unlock();

    std::function<void()> changed_;
    std::unique_ptr<sd_bus, sd_bus* (*)(sd_bus*)> bus_; // Null where there is none.
    std::unique_ptr<QSocketNotifier> notifier_;
    Locker locker_; // While it is locked.
    std::unique_ptr<sd_bus_slot, sd_bus_slot* (*)(sd_bus_slot*)> question_; // Until its answer.
    QTimer asking_; // Runs while it is locked.
};

} // namespace notch
