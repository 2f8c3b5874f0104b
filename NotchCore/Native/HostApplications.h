// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <vector>

namespace notch {

// One process of the host, as the desktop tells of it at this moment.
struct HostApplication {
    std::int32_t pid = 0;
    bool isTerminated = false;
    bool isActive = false; // One of its windows has the keyboard.
    bool isHidden = false; // It has windows, and none of them is on the screen.

    bool operator==(const HostApplication&) const = default;
};

// The host's running applications. One thread at a time.
class HostApplications {
public:
    virtual ~HostApplications() = default;
    // Read anew at each call: whoever presses or activates something relies on it.
    virtual std::vector<HostApplication> running() const = 0;
};

} // namespace notch
