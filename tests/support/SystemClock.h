// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

namespace notch {

// Bends what clock_gettime(2) tells the whole test program, the waits of the kernel excepted, while
// it lives. The program's sources must contain support/SystemClock.cpp; one at a time.
class BentClock {
public:
    enum class Bend {
        setBack, // Every look at the wall clock finds it an hour earlier than the last one.
        setForward,
        stoppedUptime, // The monotonic clock is stopped: no deadline ever comes.
    };

    explicit BentClock(Bend bend);
    ~BentClock();
    BentClock(const BentClock&) = delete;
    BentClock& operator=(const BentClock&) = delete;
};

} // namespace notch
