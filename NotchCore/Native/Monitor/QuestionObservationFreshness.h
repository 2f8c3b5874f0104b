// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Time.h"

namespace notch::QuestionObservationFreshness {

// A question that a scan saw is still worth showing: nothing around the host has changed since the
// scan began, and that was no longer ago than two scans take.
bool acceptsWaiting(Uptime capturedAt, Uptime now, Uptime environmentChangedAt,
    bool subscriptionCurrent, bool enabled, bool background);

} // namespace notch::QuestionObservationFreshness
