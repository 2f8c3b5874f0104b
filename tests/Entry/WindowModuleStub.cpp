// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "WindowModule.h"

#include <cstdio>
#include <fcntl.h>
#include <initializer_list>
#include <unistd.h>

int notchWindowMain(notch::WindowMode mode, int argc, char** argv)
{
    std::printf("mode %d", static_cast<int>(mode));
    for (int i = 1; i < argc; ++i)
        std::printf(" %s", argv[i]);
    std::puts("");
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (::fcntl(stream, F_GETFD) < 0)
            return 41;
    return 42;
}
