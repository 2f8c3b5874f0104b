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

// Where an element stands: screen points, y growing downward.
struct ScreenRect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    double minX() const { return x; }
    double minY() const { return y; }
    double maxX() const { return x + width; }
    double maxY() const { return y + height; }
    double midY() const { return y + height / 2; }

    // Grown on all four sides.
    ScreenRect grownBy(double points) const;
    // Edges may touch. Both must be usable.
    bool contains(const ScreenRect& other) const;

    bool operator==(const ScreenRect&) const = default;
};

// Finite, and with an area: what any rule about positions starts from.
bool isUsableFrame(const ScreenRect& rect);

} // namespace notch
