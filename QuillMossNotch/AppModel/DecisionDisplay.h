// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Time.h"
#include "Foundation/UUID.h"
#include "Geometry/Rect.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace notch {

// When the person acted, by the clock of the server that tells of it: milliseconds that wrap around
// after seven weeks. An event keeps it however long the main thread takes to come to it.
struct InputTime {
    std::uint32_t milliseconds = 0;

    bool operator==(const InputTime&) const = default;
    // Right for moments less than three weeks apart.
    friend Seconds operator-(InputTime a, InputTime b)
    {
        return Seconds{static_cast<std::int32_t>(a.milliseconds - b.milliseconds) / 1000.0};
    }
};

// A decision as a person sees it: the request, its form, and where its buttons are on the desktop.
// In the same way the one step that a reminder offers, by the reminder's token.
struct ShownDecision {
    std::string requestID; // Empty for a reminder.
    bool showsAllParameters = false;
    std::array<Rect, 2> buttons; // The same twice where there is one.
    std::optional<UUID> reminder;

    bool operator==(const ShownDecision&) const = default;
};

// The screen, as far as decisions and reminders are concerned. Main thread.
class DecisionDisplay {
public:
    virtual ~DecisionDisplay() = default;

    // What a person could press this very moment: drawn, on the screen, uncovered and not moved
    // since. Nothing when any of it does not hold.
    virtual std::optional<ShownDecision> onShow() const = 0;
    // The server's clock now; nothing where events carry no time.
    virtual std::optional<InputTime> inputTime() const = 0;
    // Two presses within this time are one gesture on this desktop.
    virtual Seconds doubleClickInterval() const = 0;
};

} // namespace notch
