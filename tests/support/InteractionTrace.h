// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Interaction/NotchInteraction.h"

#include <string>
#include <string_view>

namespace notch {

// Plays the operations of a trace on a fresh NotchInteraction and writes the state behind each:
//
//   at 0.00 receive A until 50  | yes  open [A] ready 0.45
//
// Operations: at T, receive [native|question|foreign] ID until T, enter, leave, expand, collapse,
// select ID, can ID, finish ID KIND [demo], gone ID, dismiss, details.
// Times are in seconds from an arbitrary start.
std::string playTrace(std::string_view trace);

// Open or closed; the queue with the current request in brackets; the readiness as given; then
// inside, blocked, details, and the receipt.
std::string printed(const NotchInteraction& interaction, const std::string& readiness);

} // namespace notch
