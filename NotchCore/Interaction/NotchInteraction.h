// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Bridge/ApprovalRequest.h"
#include "Foundation/Time.h"
#include "Foundation/UUID.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace notch {

// The approval queue and the notch's open or closed state, as a value: it reads no clock, starts no
// timer and refuses silently. It makes an approval by accident impossible: a decision counts only
// when the notch has been open with the same request on it for handoffDelay.
class NotchInteraction {
public:
    // The guard delay that every arming in this system uses.
    static constexpr Seconds handoffDelay{0.45};

    // The receipt shown after a request has ended.
    struct Feedback {
        enum class Kind : std::uint8_t { allowed, denied, returned, expired, unavailable };

        UUID id; // Fresh for every receipt.
        Kind kind = Kind::unavailable;
        bool isDemo = false; // Nothing reached a hook.
        bool isNative = false; // The request was a card in the host's window.

        bool operator==(const Feedback&) const = default;
    };

    const std::vector<ApprovalRequest>& requests() const { return requests_; }
    const std::optional<std::string>& selectedID() const { return selectedID_; }
    bool expanded() const { return expanded_; }
    bool pointerInside() const { return pointerInside_; }
    bool hoverBlockedUntilExit() const { return hoverBlockedUntilExit_; }
    const std::optional<Feedback>& feedback() const { return feedback_; }
    // The earliest moment at which a decision counts.
    Date readyAt() const { return readyAt_; }

    // The details of the current request are unfolded. The one field with a plain setter.
    bool showAllParameters = false;

    // The selected request, or the head of the queue; null only when nothing waits.
    // Valid until the next change of this value.
    const ApprovalRequest* current() const;
    std::optional<std::string> currentID() const;
    bool canAutoCollapse() const;

    // False: refused, nothing has changed.
    bool receive(const ApprovalRequest& request, Date now);
    // True when a hover expansion may be scheduled.
    bool pointerEntered();
    void pointerLeft();
    void expand(Date now);
    void collapse();
    void select(const std::string& id, Date now);
    bool canDecide(const std::string& id, Date now) const;
    void finish(const std::string& id, Feedback::Kind kind, bool isDemo);
    // The hook of this request has gone away.
    void disconnected(const std::string& id, Date now);
    void dismissFeedback(Date now);

    bool operator==(const NotchInteraction&) const = default;

private:
    std::vector<ApprovalRequest> requests_; // In order of arrival; ids are unique.
    std::optional<std::string> selectedID_;
    bool expanded_ = false;
    bool pointerInside_ = false;
    bool hoverBlockedUntilExit_ = false;
    std::optional<Feedback> feedback_;
    Date readyAt_ = Date::distantFuture();
};

} // namespace notch
