// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Interaction/QuestionReminderState.h"

#include <algorithm>

namespace notch {
namespace {

constexpr int scansThatConfirm = 2;
constexpr int absencesThatEndAFlow = 2;

} // namespace

void QuestionReminderState::observe(const Observation& observation)
{
    const auto* reminder = std::get_if<QuestionReminder>(&observation);
    if (reminder && reminder->isValid())
        return observeWaiting(*reminder);
    if (std::holds_alternative<Absent>(observation))
        return observeAbsence();
    // The flow itself is remembered, across the time that the host is in front.
    withdraw();
    absenceCount_ = 0;
}

void QuestionReminderState::withdraw()
{
    visibleReminder_.reset();
    previousWaiting_.reset();
    waitingCount_ = 0;
}

void QuestionReminderState::observeAbsence()
{
    withdraw();
    if (++absenceCount_ >= absencesThatEndAFlow)
        *this = {};
}

void QuestionReminderState::observeWaiting(const QuestionReminder& reminder)
{
    const Identity seen{.flowID = reminder.flowID, .pid = reminder.pid};
    if (identity_ != seen) {
        *this = {};
        identity_ = seen;
        token_ = PresentationToken{UUID::random()};
    }
    absenceCount_ = 0;
    const bool again = previousWaiting_ == reminder;
    waitingCount_ = again ? std::min(waitingCount_ + 1, scansThatConfirm) : 1;
    previousWaiting_ = reminder;
    // After a hand-off the host has the person's attention; asking again would nag.
    visibleReminder_.reset();
    if (waitingCount_ == scansThatConfirm && handoffStatus_ != HandoffStatus::activated)
        visibleReminder_ = reminder;
}

std::optional<QuestionReminderState::PresentationToken> QuestionReminderState::claimAutoExpansion(
    bool canPresent)
{
    if (!canPresent || !visibleReminder_ || hasBeenPresented_)
        return std::nullopt;
    hasBeenPresented_ = true;
    return token_;
}

void QuestionReminderState::collapse()
{
    if (visibleReminder_)
        hasBeenPresented_ = true;
}

std::optional<QuestionReminderState::Handoff> QuestionReminderState::beginHandoff(
    const PresentationToken& token, bool canPresent)
{
    if (!canPresent || token_ != token || !visibleReminder_
        || handoffStatus_ != HandoffStatus::idle)
        return std::nullopt;
    hasBeenPresented_ = true;
    handoffStatus_ = HandoffStatus::inFlight;
    return Handoff{.token = token, .reminder = *visibleReminder_};
}

bool QuestionReminderState::completeHandoff(const PresentationToken& token, bool activated)
{
    if (token_ != token || handoffStatus_ != HandoffStatus::inFlight)
        return false;
    if (activated) {
        handoffStatus_ = HandoffStatus::activated;
        visibleReminder_.reset();
    } else {
        handoffStatus_ = HandoffStatus::activationFailed;
    }
    return true;
}

} // namespace notch
