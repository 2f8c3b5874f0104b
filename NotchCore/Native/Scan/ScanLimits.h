// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Time.h"

#include <cstddef>

namespace notch::scan {

// What one scan may cost, and cost the host; a scan that meets a limit is incomplete.
inline constexpr Seconds budget{0.45}; // Well under the time from one tick to the next.
inline constexpr int nodeLimit = 1800; // The node with this number is not read any more.
inline constexpr int maxDepth = 36; // A window has depth 0.
inline constexpr std::size_t maxWindows = 12;
inline constexpr std::size_t maxTextBytes = 65'536; // Of one text.
inline constexpr std::size_t maxAllTextBytes = 1'048'576;

} // namespace notch::scan
