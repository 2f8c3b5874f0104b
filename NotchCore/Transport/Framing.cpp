// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Transport/Framing.h"

#include "Transport/FrameDecoder.h"
#include "Transport/PollUntil.h"

#include <array>
#include <cerrno>
#include <poll.h>
#include <sys/socket.h>

namespace notch {
namespace {

constexpr std::size_t receiveBytes = 8192;

bool waitFor(const UniqueFd& connection, short event, const FrameLimits& limits)
{
    return pollUntil(connection.get(), event, limits.deadline, limits.stop);
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
