// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotchView/DisplayState.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace notch {

// The open notch while nothing waits.
struct IdleContent {
    enum class Action : std::uint8_t { showSettings, openHost, grantAccess };

    std::string_view title;
    std::string_view note;
    std::optional<std::string> statusLine; // Once a hook is configured.
    std::optional<std::string> completionLine;
    std::optional<std::string> nativeLine;
    Action action = Action::showSettings;
    std::string_view actionText;

    explicit IdleContent(const AppModelState& state);
};

inline constexpr std::string_view tryItOutText = "体验一下 →";

} // namespace notch
