// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Foundation/Time.h"

#include <ctime>

namespace notch {
namespace {

constexpr double secondsFrom1970To2001 = 978307200.0;

double read(clockid_t clock)
{
    timespec time{};
    ::clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

} // namespace

Date Date::now()
{
    return {read(CLOCK_REALTIME) - secondsFrom1970To2001};
}

Uptime Uptime::now()
{
    return {read(CLOCK_MONOTONIC)};
}

} // namespace notch
