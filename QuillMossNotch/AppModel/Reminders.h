// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Time.h"
#include "Interaction/QuestionReminderState.h"

namespace notch {

// What the approval half of the model asks of its reminder half: questions that the host waits on
// and turns that ended. Reminders answer nothing and yield the notch to every request and receipt.
// Main thread.
class Reminders {
public:
    virtual ~Reminders() = default;

    // Launch, in this order.
    virtual void startObservers() = 0;
    // Also when the person's switch was flipped: begins anew, or ends, as the switch says.
    virtual void startTurnEnds() = 0;
    // Termination.
    virtual void stopTurnEnds() = 0;
    // Native observation was configured anew; what an older one saw is stale.
    virtual void nativeMonitoringRestarted() = 0;
    // What a look at the host's windows found, and when that look began.
    virtual void observe(const QuestionReminderState::Observation& seen, Uptime capturedAt) = 0;

    // A reminder is visible, whether or not a request keeps the notch from it.
    virtual bool questionVisible() const = 0;
    virtual bool completionVisible() const = 0;

    // Takes both actions away at once.
    virtual void disarm() = 0;
    // Claims the notch for what waits, if it may.
    virtual void refresh(Date now) = 0;
    // The notch is about to collapse: what is on show counts as seen.
    virtual void willCollapse() = 0;
    virtual void pointerEntered() = 0;
    // Called only while a turn-end reminder owns the notch and the pointer had been inside.
    virtual void pointerLeft() = 0;
};

// No reminder ever.
class AbsentReminders final : public Reminders {
public:
    void startObservers() override { }
    void startTurnEnds() override { }
    void stopTurnEnds() override { }
    void nativeMonitoringRestarted() override { }
    void observe(const QuestionReminderState::Observation&, Uptime) override { }
    bool questionVisible() const override { return false; }
    bool completionVisible() const override { return false; }
    void disarm() override { }
    void refresh(Date) override { }
    void willCollapse() override { }
    void pointerEntered() override { }
    void pointerLeft() override { }
};

} // namespace notch
