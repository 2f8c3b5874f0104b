// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdlib>

// What a fuzz target says of every input. The fuzzer keeps an input of which it does not hold.
inline void require(bool holds)
{
    if (!holds)
        std::abort();
}
