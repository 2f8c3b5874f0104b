// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/HookClient.h"

#include "Bridge/HookMessage.h"
#include "Transport/Framing.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <poll.h>
#include <string>
#include <utility>

namespace notch {
namespace {

constexpr std::size_t readBytes = 16384;
constexpr Seconds writeTimeout{2};
// Longer than the request's own lifetime, so that a lapse shows as a closed connection.
constexpr Seconds replyTimeout{52};

// Without a limit on time: waiting again is right for a descriptor that the host made non-blocking,
// too. False when the descriptor is unusable.
bool mayTryAgain(int descriptor, short event)
{
    if (errno == EINTR)
        return true;
    pollfd waited{descriptor, event, 0};
    return errno == EAGAIN && (::poll(&waited, 1, -1) >= 0 || errno == EINTR);
}

// Everything to the end of file; nothing when that is too much or cannot be read.
std::optional<std::string> readInput(int input)
{
    std::string all;
    std::array<char, readBytes> chunk;
    for (;;) {
        const auto count = ::read(input, chunk.data(), chunk.size());
        if (count == 0)
            return all;
        if (count < 0 && mayTryAgain(input, POLLIN))
            continue;
        if (count < 0 || all.size() + static_cast<std::size_t>(count) > maximumHookInput)
            return std::nullopt;
        all.append(chunk.data(), static_cast<std::size_t>(count));
    }
}

void writeOutput(int output, std::string_view line)
{
    // A host that is gone, or a file that may not grow, must not turn into a signal's exit status.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    while (!line.empty()) {
        const auto count = ::write(output, line.data(), line.size());
        if (count > 0)
            line.remove_prefix(static_cast<std::size_t>(count));
        else if (count == 0 || !mayTryAgain(output, POLLOUT))
            return;
    }
}

std::optional<ApprovalRequest> readRequest(int input, std::string_view source)
{
    const auto bytes = readInput(input);
    return bytes ? parseHookInput(*bytes, source, Date::now()) : std::nullopt;
}

} // namespace

HookClient::HookClient(BridgeDirectory directory)
    : socket_(std::move(directory), approvalSocketName)
{
}

void HookClient::run(std::string_view source, int input, int output) const
{
    const auto request = readRequest(input, source);
    const auto decision = request ? exchange(*request) : std::nullopt;
    if (decision)
        writeOutput(output, hookOutput(request->eventName, *decision));
}

std::optional<Decision> HookClient::exchange(const ApprovalRequest& request) const
{
    const auto connection = socket_.connect();
    if (!connection)
        return std::nullopt;
    const FrameLimits untilReply{.deadline = Uptime::now() + replyTimeout};
    if (!writeFrame(*connection, request.serialize(), {.deadline = Uptime::now() + writeTimeout}))
        return std::nullopt;
    const auto line = readFrame(*connection, untilReply);
    const auto reply = line ? DecisionReply::parse(*line) : std::nullopt;
    if (!reply || reply->id != request.id)
        return std::nullopt;
    return reply->decision;
}

} // namespace notch
