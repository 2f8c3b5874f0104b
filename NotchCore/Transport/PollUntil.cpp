// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Transport/PollUntil.h"

#include "Transport/PollTimeout.h"

#include <array>
#include <cerrno>
#include <poll.h>

namespace notch {

bool pollUntil(int descriptor, short events, Uptime deadline, const PollableFlag* stop)
{
    for (;;) {
        const auto now = Uptime::now();
        if (now >= deadline)
            return false;
        std::array<pollfd, 2> waited{{
            {descriptor, events, 0},
            {stop ? stop->descriptor() : -1, POLLIN, 0}, // poll skips a negative one.
        }};
        const int ready = ::poll(waited.data(), waited.size(), pollTimeout(deadline - now));
        if (waited[1].revents != 0 || (ready < 0 && errno != EINTR))
            return false;
        if (ready > 0)
            return true;
    }
}

} // namespace notch
