// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/Framing.h"

#include "Bridge/FrameDecoder.h"
#include "Bridge/PollTimeout.h"

#include <array>
#include <cerrno>
#include <poll.h>
#include <sys/socket.h>

namespace notch {
namespace {

constexpr std::size_t receiveBytes = 8192;

// True when the connection is ready for the event before the deadline. One wait to the end: the
// flag is in the same poll and the deadline is on poll's own clock, so nothing can be missed.
bool waitFor(const UniqueFd& connection, short event, const FrameLimits& limits)
{
    for (;;) {
        const auto now = Uptime::now();
        if (now >= limits.deadline)
            return false;
        std::array<pollfd, 2> waited{{
            {connection.get(), event, 0},
            {limits.stop ? limits.stop->descriptor() : -1, POLLIN, 0}, // poll skips a negative one.
        }};
        const int ready = ::poll(waited.data(), waited.size(), pollTimeout(limits.deadline - now));
        if (waited[1].revents != 0 || (ready < 0 && errno != EINTR))
            return false;
        if (ready > 0)
            return true;
    }
}

bool isPassing(int error)
{
    return error == EINTR || error == EAGAIN;
}

} // namespace

std::optional<std::string> readFrame(const UniqueFd& connection, const FrameLimits& limits)
{
    FrameDecoder decoder(limits.maximumPayload);
    std::array<char, receiveBytes> buffer;
    while (waitFor(connection, POLLIN, limits)) {
        const auto received = ::recv(connection.get(), buffer.data(), buffer.size(), 0);
        if (received < 0 && isPassing(errno))
            continue;
        if (received <= 0)
            return std::nullopt;
        switch (decoder.append({buffer.data(), static_cast<std::size_t>(received)})) {
        case FrameDecoder::State::complete:
            return std::move(decoder).payload();
        case FrameDecoder::State::failed:
            return std::nullopt;
        case FrameDecoder::State::incomplete:
            break;
        }
    }
    return std::nullopt;
}

bool writeFrame(const UniqueFd& connection, std::string_view payload, const FrameLimits& limits)
{
    if (payload.size() > limits.maximumPayload)
        return false;
    std::string line(payload);
    line += '\n';
    for (std::string_view rest = line; !rest.empty();) {
        if (!waitFor(connection, POLLOUT, limits))
            return false;
        const auto sent = ::send(connection.get(), rest.data(), rest.size(), MSG_NOSIGNAL);
        if (sent < 0 && isPassing(errno))
            continue;
        if (sent <= 0)
            return false;
        rest.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

} // namespace notch
