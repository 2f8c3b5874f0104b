// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/DecisionDisplay.h"

#include <cstddef>
#include <deque>

namespace notch {

// The last presses of pointer and finger anywhere on the desktop. A person who clicks and clicks on
// something else must not hit what opens under the pointer.
class PressHistory {
public:
    void note(InputTime press);
    // Another press came before this one by less than `interval`, whatever either was for.
    // Presses after it may be known already: events are noted before they are handed on.
    bool followsAnother(InputTime press, Seconds interval) const;

private:
    static constexpr std::size_t limit = 64; // More cannot wait unhandled but in a burst.

    std::deque<InputTime> presses_; // In order, each time once.
};

} // namespace notch
