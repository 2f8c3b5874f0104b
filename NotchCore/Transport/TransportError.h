// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>

namespace notch {

// Why a server could not start.
struct TransportError {
    enum class Code : std::uint8_t { system, unsafePath, alreadyRunning };

    Code code = Code::system;
    int systemErrno = 0; // Set only with Code::system.

    bool operator==(const TransportError&) const = default;

    // One English line for people.
    std::string describe() const;
};

} // namespace notch
