// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Time.h"

#include <algorithm>

namespace notch {

// A length of time as poll(2) takes it. Rounded up, for a wait that ends just before its deadline
// would be repeated with a timeout of 0 until the deadline; never negative, which means forever.
inline int pollTimeout(Seconds time)
{
    constexpr double longest = 3'600'000;
    const double milliseconds = std::clamp(time.count() * 1000, 0.0, longest);
    const int whole = static_cast<int>(milliseconds); // Without libm, which every hook would load.
    return whole + (whole < milliseconds ? 1 : 0);
}

} // namespace notch
