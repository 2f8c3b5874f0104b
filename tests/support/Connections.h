// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/UniqueFd.h"
#include "Transport/PollUntil.h"

#include <poll.h>
#include <string_view>
#include <sys/socket.h>

namespace notch {

// As much of the bytes as the system takes at once.
inline void sendBytes(const UniqueFd& connection, std::string_view bytes)
{
    ::send(connection.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
}

// True when the peer closes the connection without a byte; false when that takes too long.
inline bool isClosed(const UniqueFd& connection)
{
    constexpr Seconds ample{30};
    char byte{};
    return pollUntil(connection.get(), POLLIN, Uptime::now() + ample)
        && ::recv(connection.get(), &byte, 1, MSG_DONTWAIT) <= 0;
}

} // namespace notch
