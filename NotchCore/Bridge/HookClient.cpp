// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/HookClient.h"

#include "Bridge/HookMessage.h"
#include "Transport/Framing.h"
#include "Transport/Streams.h"

#include <utility>

namespace notch {
namespace {

constexpr Seconds writeTimeout{2};
// Longer than the request's own lifetime, so that a lapse shows as a closed connection.
constexpr Seconds replyTimeout{52};

std::optional<ApprovalRequest> readRequest(int input, std::string_view source)
{
    const auto bytes = readInput(input, maximumHookInput);
    return bytes ? parseHookInput(*bytes, source, Date::now()) : std::nullopt;
}

} // namespace

HookClient::HookClient(SocketDirectory directory)
    : socket_(std::move(directory), approvalSocketName)
{
}

void HookClient::run(std::string_view source, int input, int output) const
{
    const auto request = readRequest(input, source);
    const auto decision = request ? exchange(*request) : std::nullopt;
    if (!decision)
        return;
    // A host that is gone, or a file that may not grow, must not turn into a signal's exit status.
    ignoreWriteSignals();
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
