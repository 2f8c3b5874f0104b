// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Entry/Terminal.h"

#include <cerrno>
#include <unistd.h>

namespace notch {
namespace {

// Without the standard streams, whose initialisation every hook process would pay for.
void write(int descriptor, std::string_view text)
{
    while (!text.empty()) {
        const auto count = ::write(descriptor, text.data(), text.size());
        if (count > 0)
            text.remove_prefix(static_cast<std::size_t>(count));
        else if (count == 0 || errno != EINTR)
            return;
    }
}

} // namespace

void print(std::string_view text)
{
    write(STDOUT_FILENO, text);
}

int complain(std::string_view text)
{
    constexpr int failure = 1;
    write(STDERR_FILENO, text);
    return failure;
}

} // namespace notch
