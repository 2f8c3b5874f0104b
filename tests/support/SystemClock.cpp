// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "support/SystemClock.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

namespace notch {
namespace {

constexpr time_t hour = 3600;

std::atomic<time_t> wallStep = 0;
std::atomic<time_t> wallOffset = 0;
std::atomic<std::int64_t> uptimeStandsAt = 0; // In nanoseconds; 0: it goes.

} // namespace

BentClock::BentClock(Bend bend)
{
    wallOffset = 0;
    wallStep = bend == Bend::setBack ? -hour : bend == Bend::setForward ? hour : 0;
    if (bend == Bend::stoppedUptime)
        uptimeStandsAt =
            std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

BentClock::~BentClock()
{
    wallStep = 0;
    wallOffset = 0;
    uptimeStandsAt = 0;
}

} // namespace notch

// Takes the place of the C library's for everything that this program links.
extern "C" __attribute__((visibility("default"))) int clock_gettime(clockid_t clock, timespec* time)
{
    const long result = ::syscall(SYS_clock_gettime, clock, time);
    if (clock == CLOCK_REALTIME)
        time->tv_sec += notch::wallOffset += notch::wallStep;
    const auto standsAt = notch::uptimeStandsAt.load();
    if (clock == CLOCK_MONOTONIC && standsAt != 0)
        *time = {.tv_sec = standsAt / 1'000'000'000, .tv_nsec = standsAt % 1'000'000'000};
    return static_cast<int>(result);
}
