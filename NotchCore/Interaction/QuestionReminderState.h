// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/UUID.h"
#include "Interaction/QuestionReminder.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace notch {

// When a question that the host waits on may be shown, as a value that is fed one observation per
// scan. A question is shown only after two identical scans; a flow opens the notch by itself once
// at most and hands over to the host once at most; a stale token is refused silently.
//
//   handoffStatus      event                            next
//   idle               beginHandoff                     inFlight
//   inFlight           completeHandoff, activated       activated: withdrawn for this flow
//   inFlight           completeHandoff, not activated   activationFailed: shown, never retried
//   any                new flow, two absences in a row  idle
class QuestionReminderState {
public:
    // Names the present flow; fresh for each flow.
    struct PresentationToken {
        UUID value;

        bool operator==(const PresentationToken&) const = default;
    };

    enum class HandoffStatus : std::uint8_t { idle, inFlight, activated, activationFailed };

    struct Handoff {
        PresentationToken token;
        QuestionReminder reminder;

        std::int32_t pid() const { return reminder.pid; }
        bool operator==(const Handoff&) const = default;
    };

    // Nothing can be said: the scan was partial, or the host is in front.
    struct Unavailable {
        bool operator==(const Unavailable&) const = default;
    };
    // A complete scan saw no question.
    struct Absent {
        bool operator==(const Absent&) const = default;
    };
    // A reminder says that the host waits on it.
    using Observation = std::variant<Unavailable, Absent, QuestionReminder>;

    const std::optional<PresentationToken>& token() const { return token_; }
    // What may be shown now.
    const std::optional<QuestionReminder>& visible() const { return visibleReminder_; }
    // The flow has had its one automatic presentation.
    bool hasBeenPresented() const { return hasBeenPresented_; }
    HandoffStatus handoffStatus() const { return handoffStatus_; }

    // An invalid reminder counts as Unavailable.
    void observe(const Observation& observation);
    // The one automatic opening of this flow; nothing if it may not open, or not again.
    std::optional<PresentationToken> claimAutoExpansion(bool canPresent);
    // A visible reminder that collapses counts as having been seen.
    void collapse();
    // Nothing: refused, nothing has changed.
    std::optional<Handoff> beginHandoff(const PresentationToken& token, bool canPresent);
    // False: refused, nothing has changed.
    bool completeHandoff(const PresentationToken& token, bool activated);

    bool operator==(const QuestionReminderState&) const = default;

private:
    struct Identity {
        std::string flowID;
        std::int32_t pid = 0;

        bool operator==(const Identity&) const = default;
    };

    void withdraw();
    void observeAbsence();
    void observeWaiting(const QuestionReminder& reminder);

    std::optional<PresentationToken> token_;
    std::optional<QuestionReminder> visibleReminder_;
    bool hasBeenPresented_ = false;
    HandoffStatus handoffStatus_ = HandoffStatus::idle;
    std::optional<Identity> identity_;
    std::optional<QuestionReminder> previousWaiting_;
    int waitingCount_ = 0; // Consecutive identical ones, at most scansThatConfirm.
    int absenceCount_ = 0; // Consecutive ones.
};

} // namespace notch
