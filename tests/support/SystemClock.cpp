// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "support/SystemClock.h"

#include <atomic>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

namespace notch {
namespace {

constexpr time_t hour = 3600;

std::atomic<time_t> wallStep = 0;
std::atomic<time_t> wallOffset = 0;
std::atomic<bool> uptimeStands = false;

} // namespace

BentClock::BentClock(Bend bend)
{
    wallOffset = 0;
    wallStep = bend == Bend::setBack ? -hour : bend == Bend::setForward ? hour : 0;
    uptimeStands = bend == Bend::stoppedUptime;
}

BentClock::~BentClock()
{
    wallStep = 0;
    wallOffset = 0;
    uptimeStands = false;
}

} // namespace notch

// Takes the place of the C library's for everything that this program links.
extern "C" __attribute__((visibility("default"))) int clock_gettime(clockid_t clock, timespec* time)
{
    const long result = ::syscall(SYS_clock_gettime, clock, time);
    if (clock == CLOCK_REALTIME)
        time->tv_sec += notch::wallOffset += notch::wallStep;
    if (clock == CLOCK_MONOTONIC && notch::uptimeStands)
        *time = {.tv_sec = 1, .tv_nsec = 0};
    return static_cast<int>(result);
}
