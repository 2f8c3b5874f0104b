// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Time.h"
#include "Foundation/UniqueFd.h"
#include "Transport/PollableFlag.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace notch {

// What one message on the approval bridge may hold, without its line feed.
inline constexpr std::size_t maximumFramePayload = 1'048'576;

// What bounds the transfer of one message. The deadline is monotonic: a change of the wall clock
// neither stretches nor cuts it.
struct FrameLimits {
    Uptime deadline;
    std::size_t maximumPayload = maximumFramePayload;
    const PollableFlag* stop = nullptr; // Gives up when raised; null: nothing does.
};

// One message over a non-blocking connection; nothing on any failure. Every caller's answer to a
// failure is to close the connection, so no reason is given.
std::optional<std::string> readFrame(const UniqueFd& connection, const FrameLimits& limits);

// True when the whole message and its line feed were handed to the system.
bool writeFrame(const UniqueFd& connection, std::string_view payload, const FrameLimits& limits);

} // namespace notch
