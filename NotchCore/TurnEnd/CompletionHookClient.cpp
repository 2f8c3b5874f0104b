// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "TurnEnd/CompletionHookClient.h"

#include "Transport/Framing.h"
#include "Transport/PollUntil.h"

#include <array>
#include <cerrno>
#include <poll.h>
#include <string>
#include <utility>

namespace notch {
namespace {

constexpr std::size_t readBytes = 8192;
constexpr Seconds inputTimeout{0.3}; // From the start to the end of file, however it comes.
constexpr Seconds connectTimeout{0.08};
constexpr Seconds writeTimeout{0.12};

// Everything to the end of file; nothing when that is too much, comes too late or cannot be read.
std::optional<std::string> readInput(int input, Uptime deadline)
{
    std::string all;
    std::array<char, readBytes> chunk;
    while (pollUntil(input, POLLIN, deadline)) {
        const auto count = ::read(input, chunk.data(), chunk.size());
        if (count == 0)
            return all;
        if (count < 0 && (errno == EINTR || errno == EAGAIN))
            continue;
        if (count < 0
            || all.size() + static_cast<std::size_t>(count) > CompletionEvent::maximumHookInput)
            return std::nullopt;
        all.append(chunk.data(), static_cast<std::size_t>(count));
    }
    return std::nullopt;
}

} // namespace

CompletionHookClient::CompletionHookClient(BridgeDirectory directory)
    : socket_(std::move(directory), turnEndSocketName)
{
}

void CompletionHookClient::run(int input) const
{
    const auto bytes = readInput(input, Uptime::now() + inputTimeout);
    const auto event = bytes ? CompletionEvent::decodeHook(*bytes, Date::now()) : std::nullopt;
    if (event)
        send(*event);
}

bool CompletionHookClient::send(const CompletionEvent& event) const
{
    if (!event.isValid())
        return false;
    const auto connection = socket_.connect(connectTimeout);
    return connection
        && writeFrame(*connection, event.serialize(),
            {.deadline = Uptime::now() + writeTimeout,
                .maximumPayload = CompletionEvent::maximumPayload});
}

} // namespace notch
