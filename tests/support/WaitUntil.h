// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <chrono>
#include <functional>
#include <thread>

namespace notch {

// Asks again and again whether something outside this process has come about. False after ten
// seconds, which no healthy run comes near.
inline bool waitUntil(const std::function<bool()>& condition)
{
    using namespace std::chrono_literals;
    const auto deadline = std::chrono::steady_clock::now() + 10s;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= deadline)
            return false;
        std::this_thread::sleep_for(10ms);
    }
    return true;
}

} // namespace notch
