// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>

namespace notch {

// Lets one allocation in the threads that start while it lives fail: the one after so many others.
// The program's sources must contain support/ShortMemory.cpp; one at a time.
class ShortMemory {
public:
    explicit ShortMemory(std::size_t after);
    ~ShortMemory();
    ShortMemory(const ShortMemory&) = delete;
    ShortMemory& operator=(const ShortMemory&) = delete;

    // False: there were not that many.
    bool hasFailed() const;
};

// For a thread of the test itself, which has no memory to fail for.
void exemptFromShortMemory();

} // namespace notch
