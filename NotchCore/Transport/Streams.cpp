// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Transport/Streams.h"

#include "Transport/PollUntil.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <poll.h>
#include <unistd.h>

namespace notch {
namespace {

constexpr std::size_t readBytes = 8192;

// After a failed read or write. Waits for the descriptor if it was only not ready.
bool mayTryAgain(int descriptor, short event)
{
    if (errno == EINTR)
        return true;
    pollfd waited{descriptor, event, 0};
    return errno == EAGAIN && (::poll(&waited, 1, -1) >= 0 || errno == EINTR);
}

} // namespace

std::optional<std::string> readInput(
    int input, std::size_t maximumBytes, std::optional<Uptime> deadline)
{
    std::string all;
    std::array<char, readBytes> chunk;
    while (!deadline || pollUntil(input, POLLIN, *deadline)) {
        const auto count = ::read(input, chunk.data(), chunk.size());
        if (count == 0)
            return all;
        if (count < 0
            && (deadline ? errno == EINTR || errno == EAGAIN : mayTryAgain(input, POLLIN)))
            continue;
        if (count < 0 || all.size() + static_cast<std::size_t>(count) > maximumBytes)
            return std::nullopt;
        all.append(chunk.data(), static_cast<std::size_t>(count));
    }
    return std::nullopt;
}

bool writeOutput(int output, std::string_view text)
{
    while (!text.empty()) {
        const auto count = ::write(output, text.data(), text.size());
        if (count > 0)
            text.remove_prefix(static_cast<std::size_t>(count));
        else if (count == 0 || !mayTryAgain(output, POLLOUT))
            return false;
    }
    return true;
}

void ignoreWriteSignals()
{
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

} // namespace notch
