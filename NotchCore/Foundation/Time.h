// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <chrono>
#include <compare>

namespace notch {

// A length of time. Every delay and budget of this system is written in it.
using Seconds = std::chrono::duration<double>;

// A moment of the wall clock: seconds since 2001-01-01T00:00:00Z, in memory and on the wire.
// Does not mix with Uptime.
struct Date {
    double seconds = 0;

    static Date now();
    // The system's clocks count from 1970-01-01T00:00:00Z.
    static constexpr Date after1970(Seconds time)
    {
        return {time.count() - from1970To2001.count()};
    }
    constexpr Seconds since1970() const { return Seconds{seconds} + from1970To2001; }
    // Sentinels: later and earlier than every moment that occurs.
    static constexpr Date distantFuture() { return {63113904000.0}; }
    static constexpr Date distantPast() { return {-63114076800.0}; }

    friend constexpr auto operator<=>(Date, Date) = default;
    friend constexpr Date operator+(Date date, Seconds delta)
    {
        return {date.seconds + delta.count()};
    }
    friend constexpr Seconds operator-(Date a, Date b) { return Seconds{a.seconds - b.seconds}; }

private:
    static constexpr Seconds from1970To2001{978307200};
};

// A moment of CLOCK_MONOTONIC. Budgets within one process are measured with it, so that a change of
// the wall clock cannot stretch them.
struct Uptime {
    double seconds = 0;

    static Uptime now();

    friend constexpr auto operator<=>(Uptime, Uptime) = default;
    friend constexpr Uptime operator+(Uptime uptime, Seconds delta)
    {
        return {uptime.seconds + delta.count()};
    }
    friend constexpr Seconds operator-(Uptime a, Uptime b)
    {
        return Seconds{a.seconds - b.seconds};
    }
};

// Where the time comes from, for code that must also run on virtual time.
class Clock {
public:
    virtual ~Clock() = default;
    virtual Date now() const = 0;
    virtual Uptime uptime() const = 0;
};

class SystemClock final : public Clock {
public:
    Date now() const override { return Date::now(); }
    Uptime uptime() const override { return Uptime::now(); }
};

} // namespace notch
