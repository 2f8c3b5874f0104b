// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/Accessibility.h"

#include <string_view>

namespace notch {

// The last look at a button before it is pressed, straight from the live element: enabled, not
// hidden, showing nothing but this label, and offering to be pressed.
bool pressable(Accessibility& accessibility, const AXElement& button, std::string_view label);

} // namespace notch
