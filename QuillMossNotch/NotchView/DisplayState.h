// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"

#include <cstdint>

namespace notch {

// Which content the open notch shows.
enum class DisplayState : std::uint8_t { idle, receipt, approval, question, completion };

// The first that holds, top to bottom: a receipt, a request, a question, a turn's end.
DisplayState displayState(const AppModelState& state);

} // namespace notch
