// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

namespace notch {

// Plays the operations of a trace on a fresh NotchInteraction and writes the state behind each.
// Whatever stood there before is replaced, so that a test compares a whole trace with itself:
//
//   at 0.00  receive A until 50  | yes  open [A] ready 0.45
//
// Operations: receive [native|question|foreign] ID until T, enter, leave, expand, collapse,
// select ID, can ID, finish ID KIND [demo], gone ID, dismiss, details.
// State: an answer, if the operation gives one; open or closed; the queue with the current request
// in brackets; "ready" with its moment; then inside, blocked, details, and the receipt.
// Times are in seconds from an arbitrary start.
std::string playTrace(std::string_view trace);

} // namespace notch
