// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>

namespace notch {

// Roles of elements that the observation of the host's windows knows; any other text is just
// another role.
namespace role {
inline constexpr std::string_view button = "AXButton";
inline constexpr std::string_view group = "AXGroup";
inline constexpr std::string_view image = "AXImage";
inline constexpr std::string_view staticText = "AXStaticText";
inline constexpr std::string_view window = "AXWindow";
} // namespace role

} // namespace notch
