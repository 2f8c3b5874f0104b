// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/Tree/ScreenRect.h"

#include <optional>
#include <string_view>

namespace notch::scan {

// An element of this role can be seen in its window. A button must lie within the window, give or
// take two points; a text must meet it; anything else may also have no place of its own.
bool shownInWindow(std::string_view role, bool hidden, const std::optional<ScreenRect>& frame,
    const ScreenRect& windowFrame);

// The scan goes below what is visible, and never below a text.
bool childrenAreRead(std::string_view role, bool visible);

} // namespace notch::scan
