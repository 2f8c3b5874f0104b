// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Interaction/CompletionReminderState.h"

#include <cmath>

namespace notch {
namespace {

using Kind = CompletionEvent::Kind;
using Reason = CompletionEvent::Reason;

bool isAlive(const CompletionReminder& reminder, Date now)
{
    // A clock that was set back gives a negative age, and the real age is unknown.
    const auto age = now - reminder.receivedAt;
    return age >= Seconds::zero() && age < CompletionReminderState::lifetime;
}

} // namespace

bool CompletionReminderState::trackingLimited() const
{
    return turns_.size() >= mostSessions || seenStarts_.size() >= mostStarts;
}

std::optional<Date> CompletionReminderState::nextSettledAt() const
{
    if (current_ || queue_.empty())
        return std::nullopt;
    return queue_.front().receivedAt + settlingTime;
}

void CompletionReminderState::observe(const CompletionEvent& event, std::optional<std::int32_t> pid,
    bool background, bool enabled, Date now)
{
    if (!enabled) {
        reset();
        return;
    }
    refresh(now);
    if (!event.isValid() || !event.isFresh(now) || !pid || *pid < 1)
        return;
    switch (event.kind) {
    case Kind::started:
        observeStart(event, *pid);
        break;
    case Kind::ended:
        observeEnd(event, *pid, background, now);
        break;
    }
}

void CompletionReminderState::observeStart(const CompletionEvent& event, std::int32_t pid)
{
    const auto turn = turns_.find(event.sessionID);
    const bool known = turn != turns_.end();
    if (known && event.observedAt < turn->second.lastAt)
        return; // A start that comes late must not disturb a newer state.
    if (!event.generationID) {
        closeTurn(event);
        return;
    }
    if (known && turn->second.agent != event.agentID)
        return;
    const Identity identity{event.sessionID, *event.generationID};
    if (seenStarts_.contains(identity) || !hasRoomFor(event.sessionID))
        return;

    seenStarts_.insert(identity);
    removeReminders(event.sessionID);
    turns_[event.sessionID] = Turn{.generation = *event.generationID,
        .agent = event.agentID,
        .pid = pid,
        .lastAt = event.observedAt};
}

void CompletionReminderState::closeTurn(const CompletionEvent& event)
{
    removeReminders(event.sessionID);
    const auto turn = turns_.find(event.sessionID);
    if (turn == turns_.end())
        return;
    turn->second.ended = true;
    turn->second.lastAt = event.observedAt;
}

void CompletionReminderState::observeEnd(
    const CompletionEvent& event, std::int32_t pid, bool background, Date now)
{
    const auto found = turns_.find(event.sessionID);
    if (found == turns_.end() || found->second.ended)
        return;
    auto& turn = found->second;
    if (event.generationID != turn.generation || event.agentID != turn.agent || pid != turn.pid
        || event.observedAt < turn.lastAt)
        return;

    turn.ended = true; // The turn is consumed: no duplicate can revive it.
    turn.lastAt = event.observedAt;
    removeReminders(event.sessionID);
    if (event.reason != Reason::completed || !background || queuedCount() >= mostReminders)
        return;
    queue_.push_back({.token = UUID::random(), .event = event, .pid = pid, .receivedAt = now});
}

void CompletionReminderState::refresh(Date now)
{
    if (!std::isfinite(now.seconds)) {
        clearPresentation();
        return;
    }
    std::erase_if(queue_, [now](const auto& reminder) { return !isAlive(reminder, now); });
    if (current_ && !isAlive(*current_, now))
        removeCurrent();
    if (current_ || queue_.empty() || now - queue_.front().receivedAt < settlingTime)
        return;
    current_ = std::move(queue_.front());
    queue_.pop_front();
    hasBeenPresented_ = false;
}

void CompletionReminderState::clearPresentation()
{
    queue_.clear();
    removeCurrent();
}

std::optional<UUID> CompletionReminderState::claimAutoExpansion(bool canPresent, Date now)
{
    refresh(now);
    if (!canPresent || hasBeenPresented_ || !current_)
        return std::nullopt;
    hasBeenPresented_ = true;
    return current_->token;
}

void CompletionReminderState::collapse()
{
    if (current_)
        hasBeenPresented_ = true;
}

void CompletionReminderState::dismiss(UUID token)
{
    if (current_ && current_->token == token)
        removeCurrent();
}

bool CompletionReminderState::hasRoomFor(const std::string& session) const
{
    return seenStarts_.size() < mostStarts
        && (turns_.contains(session) || turns_.size() < mostSessions);
}

void CompletionReminderState::removeReminders(const std::string& session)
{
    std::erase_if(
        queue_, [&](const auto& reminder) { return reminder.event.sessionID == session; });
    if (current_ && current_->event.sessionID == session)
        removeCurrent();
}

void CompletionReminderState::removeCurrent()
{
    current_.reset();
    hasBeenPresented_ = false;
}

} // namespace notch
