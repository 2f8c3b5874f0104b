// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotchView/DisplayState.h"
#include "Style/Symbol.h"

#include <string>
#include <string_view>

namespace notch {

// The strip that is always there: the whole of the closed notch, the handle of the open one.
struct CompactContent {
    bool attention = false; // Something waits for the person.
    std::string text;
    Symbol symbol = Symbol::none;
    std::string_view toolTip;
    std::string label; // For a screen reader.

    explicit CompactContent(const AppModelState& state);
};

} // namespace notch
