// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppModel/QuestionReminders.h"

#include "Interaction/NotchInteraction.h"
#include "Native/Monitor/QuestionObservationFreshness.h"

#include <utility>
#include <variant>

namespace notch {
namespace {

using Unavailable = QuestionReminderState::Unavailable;
using HandoffStatus = QuestionReminderState::HandoffStatus;

} // namespace

QuestionReminders::QuestionReminders(
    SharedNotch& notch, const Clock& clock, const ReminderCallbacks& host)
    : notch_(notch)
    , clock_(clock)
    , host_(host)
{
}

// What scans report

NativeApprovals::OnQuestion QuestionReminders::restart()
{
    monitoringGeneration_ = UUID::random();
    if (!host_.questionFeatureEnabled()) {
        apply(Unavailable{});
        state_ = {};
        return {};
    }
    return [this, post = notch_.poster(), generation = monitoringGeneration_](
               Observation seen, Uptime capturedAt) {
        post([this, generation, seen = std::move(seen), capturedAt] {
            if (generation == monitoringGeneration_)
                deliver(seen, capturedAt);
        });
    };
}

void QuestionReminders::deliver(const Observation& seen, Uptime capturedAt)
{
    constexpr bool subscriptionCurrent = true; // By its generation.
    const auto* waiting = std::get_if<QuestionReminder>(&seen);
    if (!waiting
        || QuestionObservationFreshness::acceptsWaiting(capturedAt, clock_.uptime(),
            environmentChangedAt_, subscriptionCurrent, host_.questionFeatureEnabled(),
            host_.questionIsBackground(waiting->pid)))
        apply(seen);
}

void QuestionReminders::apply(const Observation& seen)
{
    const bool wasOnShow = isOnShow();
    const auto* waiting = std::get_if<QuestionReminder>(&seen);
    const bool inFront = waiting && !host_.questionIsBackground(waiting->pid);
    state_.observe(inFront ? Observation(Unavailable{}) : seen);
    if (!isOnShow()) {
        disarm();
        if (wasOnShow)
            notch_.withdraw();
    }
    notch_.refreshReminders();
}

void QuestionReminders::environmentChanged()
{
    environmentChangedAt_ = clock_.uptime();
    if (isVisible() && !isBackground())
        apply(Unavailable{});
}

// On the notch

void QuestionReminders::refresh()
{
    if (!isOnShow()) {
        disarm();
        return;
    }
    if (!isBackground()) {
        state_.observe(Unavailable{});
        disarm();
        return;
    }
    notch_.keepAsItIs();
    if (state_.claimAutoExpansion(true))
        notch_.open();
    if (!notch_.isOpen() || state_.handoffStatus() != HandoffStatus::idle)
        disarm();
    else if (armingToken_ != state_.token()) // Else a new page would arm it later and later.
        arm(*state_.token());
}

void QuestionReminders::disarm()
{
    actionReady_ = false;
    armingToken_.reset();
    armingWork_.cancel();
}

void QuestionReminders::arm(const Token& token)
{
    disarm();
    armingToken_ = token;
    armingWork_ =
        notch_.after(NotchInteraction::handoffDelay, [this, token] { finishArming(token); });
}

void QuestionReminders::finishArming(const Token& token)
{
    if (!isOnShow() || !notch_.isOpen() || armingToken_ != token
        || state_.handoffStatus() != HandoffStatus::idle)
        return;
    if (isBackground())
        actionReady_ = true;
    else
        apply(Unavailable{});
}

void QuestionReminders::willCollapse()
{
    if (isOnShow())
        state_.collapse();
}

bool QuestionReminders::handoff(const Token& token)
{
    if (!actionReady_ || !notch_.isOpen() || !isOnShow())
        return false;
    if (!isBackground()) {
        apply(Unavailable{});
        return false;
    }
    const auto handoff = state_.beginHandoff(token, true);
    if (!handoff)
        return false;
    disarm(); // Before anything leaves, so that the same click cannot be replayed.
    const bool activated = host_.questionActivate(handoff->pid());
    if (!state_.completeHandoff(token, activated))
        return false;
    if (activated && notch_.isFree())
        notch_.withdraw();
    return activated;
}

} // namespace notch
