// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "TurnEnd/CompletionHookClient.h"

#include "Transport/Framing.h"
#include "Transport/Streams.h"

#include <utility>

namespace notch {
namespace {

constexpr Seconds inputTimeout{0.3}; // From the start to the end of file.
constexpr Seconds connectTimeout{0.08};
constexpr Seconds writeTimeout{0.12};

} // namespace

CompletionHookClient::CompletionHookClient(SocketDirectory directory)
    : socket_(std::move(directory), turnEndSocketName)
{
}

void CompletionHookClient::run(int input) const
{
    const auto bytes =
        readInput(input, CompletionEvent::maximumHookInput, Uptime::now() + inputTimeout);
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
