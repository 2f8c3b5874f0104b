// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Entry/Terminal.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace notch {
namespace {

// False when the descriptor is unusable.
bool mayTryAgain(int descriptor)
{
    if (errno == EINTR)
        return true;
    pollfd waited{descriptor, POLLOUT, 0};
    return errno == EAGAIN && (::poll(&waited, 1, -1) >= 0 || errno == EINTR);
}

// Without the standard streams, whose initialisation every hook process would pay for.
bool write(int descriptor, std::string_view text)
{
    while (!text.empty()) {
        const auto count = ::write(descriptor, text.data(), text.size());
        if (count > 0)
            text.remove_prefix(static_cast<std::size_t>(count));
        else if (count == 0 || !mayTryAgain(descriptor))
            return false;
    }
    return true;
}

bool write(int descriptor, std::initializer_list<std::string_view> pieces)
{
    return std::ranges::all_of(
        pieces, [=](std::string_view piece) { return write(descriptor, piece); });
}

} // namespace

void openStandardStreams()
{
    // open(2) takes the lowest free number.
    for (int opened = 0; opened <= STDERR_FILENO;) {
        opened = ::open("/dev/null", O_RDWR);
        if (opened > STDERR_FILENO)
            ::close(opened);
        if (opened < 0)
            return;
    }
}

void ignoreWriteSignals()
{
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

bool print(std::initializer_list<std::string_view> pieces)
{
    return write(STDOUT_FILENO, pieces);
}

int complain(std::initializer_list<std::string_view> pieces)
{
    constexpr int failure = 1;
    write(STDERR_FILENO, pieces);
    return failure;
}

} // namespace notch
