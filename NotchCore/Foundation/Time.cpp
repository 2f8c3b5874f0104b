// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Foundation/Time.h"

#include <ctime>

namespace notch {
namespace {

Seconds read(clockid_t clock)
{
    timespec time{};
    ::clock_gettime(clock, &time);
    return Seconds{static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9};
}

} // namespace

Date Date::now()
{
    return after1970(read(CLOCK_REALTIME));
}

Uptime Uptime::now()
{
    return {read(CLOCK_MONOTONIC).count()};
}

} // namespace notch
