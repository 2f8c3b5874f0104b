// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Time.h"
#include "Foundation/UUID.h"
#include "Interaction/CompletionReminder.h"
#include "TurnEnd/CompletionEvent.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace notch {

// Pairs each turn's start with its end, as a value: it reads no clock, starts no timer and refuses
// silently. Only an exact pair that ended normally in the background becomes a reminder, and only
// once: a turn is consumed by its first end whatever follows, and a start that was ever accepted
// opens nothing again. Events come from outside the process, so everything kept is bounded.
//
//   observe(end) --> waiting --0.8 s--> current --claim or collapse--> presented
//
// A reminder is gone by dismiss, at 30 s, by a new start or end in its session, or with
// clearPresentation.
class CompletionReminderState {
public:
    static constexpr Seconds lifetime{30.0}; // At this age a reminder is gone.
    static constexpr Seconds settlingTime{0.8}; // Before this age it is not shown.
    static constexpr std::size_t mostSessions = 256;
    static constexpr std::size_t mostStarts = 4096;
    static constexpr std::size_t mostReminders = 16;

    // The reminder on offer.
    const std::optional<CompletionReminder>& current() const { return current_; }
    // The current reminder has had its one automatic presentation.
    bool hasBeenPresented() const { return hasBeenPresented_; }
    // The current reminder counts.
    std::size_t queuedCount() const { return queue_.size() + (current_ ? 1 : 0); }
    std::size_t trackedSessionCount() const { return turns_.size(); }
    // When refresh() may bring up the next reminder; nothing while one is current or none waits.
    std::optional<Date> nextSettledAt() const;
    // New sessions or turns are refused until reset().
    bool trackingLimited() const;

    // `pid` is nothing unless exactly one host runs. Without `enabled` everything is forgotten.
    void observe(const CompletionEvent& event, std::optional<std::int32_t> pid, bool background,
        bool enabled, Date now);
    void reset() { *this = {}; }
    // To be called regularly: drops what is too old and lets the next reminder come up.
    void refresh(Date now);
    // Forgets the reminders but no turn, so that nothing can be replayed.
    void clearPresentation();
    // The token of a reminder that may open the notch now, once for each reminder.
    std::optional<UUID> claimAutoExpansion(bool canPresent, Date now);
    // The current reminder can never open by itself again.
    void collapse();
    // A token that is not the current one changes nothing.
    void dismiss(UUID token);

    bool operator==(const CompletionReminderState&) const = default;

private:
    struct Turn {
        std::string generation;
        std::optional<std::string> agent;
        std::int32_t pid = 0;
        Date lastAt; // Of the last event taken.
        bool ended = false;

        bool operator==(const Turn&) const = default;
    };
    using Identity = std::pair<std::string, std::string>; // Session and generation.

    void observeStart(const CompletionEvent& event, std::int32_t pid);
    void observeEnd(const CompletionEvent& event, std::int32_t pid, bool background, Date now);
    // A start that names no turn: no pair can begin with it, and what was open is over.
    void closeTurn(const CompletionEvent& event);
    bool hasRoomFor(const std::string& session) const;
    void removeReminders(const std::string& session);
    void removeCurrent();

    std::map<std::string, Turn> turns_; // The open or just ended turn of each session.
    std::set<Identity> seenStarts_; // Every start that was accepted.
    std::deque<CompletionReminder> queue_; // In order of arrival.
    std::optional<CompletionReminder> current_;
    bool hasBeenPresented_ = false;
};

} // namespace notch
