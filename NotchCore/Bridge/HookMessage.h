// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Bridge/ApprovalRequest.h"
#include "Bridge/Decision.h"
#include "Foundation/Time.h"

#include <optional>
#include <string>
#include <string_view>

namespace notch {

// The most that the host may write to a hook's standard input.
inline constexpr std::size_t maximumHookInput = 1'048'576;
// How long a request stays open to a decision, whatever its hook says.
inline constexpr Seconds requestLifetime{50};

// What the host wrote to the hook's standard input, as a request with a fresh id that lapses
// requestLifetime from now. Nothing when this system may not answer it.
std::optional<ApprovalRequest> parseHookInput(
    std::string_view input, std::string_view source, Date now);

// The line for the hook's standard output, with its line feed; empty for passthrough.
std::string hookOutput(std::string_view eventName, Decision decision);

} // namespace notch
