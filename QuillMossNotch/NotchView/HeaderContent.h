// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotchView/DisplayState.h"
#include "Style/Symbol.h"

#include <string_view>

namespace notch {

// The line on top of the open notch.
struct HeaderContent {
    std::string_view text;
    Symbol avatar = Symbol::none; // Where there is no picture for the avatar.
    bool endsDemo = false; // The left button ends the demonstration in place of the settings.
    std::string_view settingsLabel;
    std::string_view closeLabel;
    std::string_view closeToolTip;

    explicit HeaderContent(const AppModelState& state);
};

} // namespace notch
