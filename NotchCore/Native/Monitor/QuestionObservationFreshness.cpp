// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Monitor/QuestionObservationFreshness.h"

#include <cmath>

namespace notch::QuestionObservationFreshness {
namespace {

constexpr Seconds longest{1.5};

} // namespace

bool acceptsWaiting(Uptime capturedAt, Uptime now, Uptime environmentChangedAt,
    bool subscriptionCurrent, bool enabled, bool background)
{
    const bool finite = std::isfinite(capturedAt.seconds) && std::isfinite(now.seconds)
                     && std::isfinite(environmentChangedAt.seconds);
    return finite && subscriptionCurrent && enabled && background
        && environmentChangedAt <= capturedAt && capturedAt <= now && now - capturedAt <= longest;
}

} // namespace notch::QuestionObservationFreshness
