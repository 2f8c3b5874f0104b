// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/DecisionDisplay.h"
#include "AppModel/PressHistory.h"
#include "Interaction/NotchInteraction.h"

#include <optional>

namespace notch {

// Holds the decision buttons back until the person has had the request before their eyes for the
// whole guard delay, a reminder's buttons likewise, and tells which presses may count:
//
//   on show, unchanged, for handoffDelay      the buttons may be armed; any change begins anew
//   gone, covered, moved or in another form   no decision by whatever road
//   a press from before the arming            does not count, whenever it is handled
//   a press soon after another one            does not count, wherever the other one was
//
// It only ever adds to what NotchInteraction and the reminders demand. Without a display, as in a
// model on its own, it adds nothing.
class DecisionGuard {
public:
    // Borrowed; null when there is none any more.
    void attach(const DecisionDisplay* display);
    bool isAttached() const { return display_ != nullptr; }
    // Looks at the display anew. True when what is on show is not what was: the guard begins anew.
    bool look(Uptime now);
    // How long the current request in its present form, or a reminder where there is no request,
    // has still to be on show; nothing while it is not.
    std::optional<Seconds> remaining(const NotchInteraction& interaction, Uptime now) const;
    // The current request is on show this very moment as it was when the guard began.
    bool holds(const NotchInteraction& interaction) const;
    // This reminder has been on show for the whole delay; and it still is, this very moment.
    bool hasShown(UUID reminder) const;
    bool holds(UUID reminder) const { return hasShown(reminder) && isUnchanged(); }

    // The buttons are armed from now on, and no longer.
    void arm();
    void disarm() { armed_ = false; }
    // The person pressed somewhere on the desktop.
    void notePress(InputTime press) { presses_.note(press); }
    // A press on an armed button is meant for it. Nothing: it came by a road without a clock.
    bool counts(const std::optional<InputTime>& press) const;

private:
    bool isUnchanged() const { return !display_ || display_->onShow() == shown_; }

    const DecisionDisplay* display_ = nullptr;
    std::optional<ShownDecision> shown_;
    Uptime shownSince_;
    bool armed_ = false; // For what is on show.
    std::optional<InputTime> armedAt_;
    PressHistory presses_;
};

} // namespace notch
