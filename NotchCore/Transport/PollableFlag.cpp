// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Transport/PollableFlag.h"

#include "Transport/PollTimeout.h"

#include <poll.h>
#include <sys/eventfd.h>

namespace notch {

std::optional<PollableFlag> PollableFlag::make()
{
    UniqueFd descriptor(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    if (!descriptor.valid())
        return std::nullopt;
    return PollableFlag(std::move(descriptor));
}

void PollableFlag::raise() const
{
    // Fails only when the counter is full, and then the flag has long been raised.
    ::eventfd_write(descriptor_.get(), 1);
}

bool PollableFlag::isRaised() const
{
    return wait(Seconds{0});
}

bool PollableFlag::wait(Seconds atMost) const
{
    const auto end = Uptime::now() + atMost;
    for (;;) {
        pollfd flag{descriptor_.get(), POLLIN, 0};
        const int ready = ::poll(&flag, 1, pollTimeout(end - Uptime::now()));
        if (ready > 0)
            return true;
        if (Uptime::now() >= end)
            return false;
    }
}

} // namespace notch
