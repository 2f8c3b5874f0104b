// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Time.h"
#include "Foundation/UniqueFd.h"

#include <optional>
#include <utility>

namespace notch {

// A flag that one thread raises and that others see in the same poll(2) as their sockets, so that a
// wait ends the moment it must and need not wake up to ask. It is never lowered.
class PollableFlag {
public:
    // Nothing, with errno, when there is no descriptor for it.
    static std::optional<PollableFlag> make();

    // Any thread; never waits.
    void raise() const;
    bool isRaised() const;
    // True when the flag is raised, false when the time is over first.
    bool wait(Seconds atMost) const;

    // Readable, for poll(2), from raise() on.
    int descriptor() const { return descriptor_.get(); }

private:
    explicit PollableFlag(UniqueFd descriptor)
        : descriptor_(std::move(descriptor))
    {
    }

    UniqueFd descriptor_;
};

} // namespace notch
