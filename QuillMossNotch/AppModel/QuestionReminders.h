// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/ReminderCallbacks.h"
#include "AppModel/SharedNotch.h"
#include "Foundation/Time.h"
#include "Foundation/UUID.h"
#include "Interaction/QuestionReminderState.h"
#include "Native/NativeApprovals.h"

#include <optional>

namespace notch {

// The model's part for questions that the host waits on while it is in the background. It opens the
// notch once a flow and offers to bring the host to the front; it never answers anything.
//
//   what could be out of date        is stopped by
//   a scan of an earlier monitoring  monitoringGeneration_
//   a scan of another situation      environmentChangedAt_ with QuestionObservationFreshness
//   an arming timer                  armingWork_ (ends with disarm), armingToken_
//   a button of an older question    the PresentationToken that it hands in
//
// Main thread.
class QuestionReminders {
public:
    using Observation = QuestionReminderState::Observation;
    using Token = QuestionReminderState::PresentationToken;

    // All three are borrowed and must outlive it.
    QuestionReminders(SharedNotch& notch, const Clock& clock, const ReminderCallbacks& host);

    const QuestionReminderState& state() const { return state_; }
    // The hand-off is armed.
    bool actionReady() const { return actionReady_; }
    bool isVisible() const { return state_.visible().has_value(); }
    // The notch is this question's, open or closed.
    bool isOnShow() const { return notch_.isFree() && isVisible(); }

    // Native monitoring is configured anew: what an older one saw counts no more. The way in for
    // the new one; null while questions are switched off.
    NativeApprovals::OnQuestion restart();
    // An application came to the front, hid or ended.
    void environmentChanged();
    // Claims the notch for what waits, if it may.
    void refresh();
    // Takes the action away at once.
    void disarm();
    // The person closes the notch.
    void willCollapse();
    // True: the host was brought to the front. Once a flow at most.
    bool handoff(const Token& token);

private:
    void deliver(const Observation& seen, Uptime capturedAt);
    void apply(const Observation& seen);
    bool isBackground() const { return host_.questionIsBackground(state_.visible()->pid); }
    void arm(const Token& token);
    void finishArming(const Token& token);

    SharedNotch& notch_;
    const Clock& clock_;
    const ReminderCallbacks& host_;
    QuestionReminderState state_;
    bool actionReady_ = false;
    std::optional<Token> armingToken_; // Arming for it is running or done.
    DelayedWork armingWork_;
    UUID monitoringGeneration_ = UUID::random();
    Uptime environmentChangedAt_;
};

} // namespace notch
