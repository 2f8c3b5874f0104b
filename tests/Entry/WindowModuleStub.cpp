// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "WindowModule.h"

#include <cstdio>

int notchWindowMain(notch::WindowMode mode, int argc, char** argv)
{
    std::printf("mode %d", static_cast<int>(mode));
    for (int i = 1; i < argc; ++i)
        std::printf(" %s", argv[i]);
    std::puts("");
    return 42;
}
