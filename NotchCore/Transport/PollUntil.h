// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Time.h"
#include "Transport/PollableFlag.h"

namespace notch {

// True when the descriptor is ready for the events of poll(2) before the deadline, and before the
// flag is raised if there is one. One wait to the end: the flag is in the same poll and the
// deadline is on poll's own clock, so nothing can be missed.
bool pollUntil(int descriptor, short events, Uptime deadline, const PollableFlag* stop = nullptr);

} // namespace notch
