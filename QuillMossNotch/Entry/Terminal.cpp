// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Entry/Terminal.h"

#include "Transport/Streams.h"

#include <algorithm>
#include <fcntl.h>
#include <unistd.h>

namespace notch {
namespace {

// Without the standard library's streams, whose initialisation every hook process would pay for.
bool write(int descriptor, std::initializer_list<std::string_view> pieces)
{
    return std::ranges::all_of(
        pieces, [=](std::string_view piece) { return writeOutput(descriptor, piece); });
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
