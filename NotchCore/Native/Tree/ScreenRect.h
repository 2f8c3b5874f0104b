// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

namespace notch {

// The place of an element: screen points, y growing downward.
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

    bool isEmpty() const { return !(width > 0 && height > 0); }
    // Grown on all four sides.
    ScreenRect grownBy(double points) const;
    // Edges may touch. Both must be usable.
    bool contains(const ScreenRect& other) const;
    // They share an area; touching edges are none.
    bool intersects(const ScreenRect& other) const;

    bool operator==(const ScreenRect&) const = default;
};

// Finite, and with an area: what any rule about positions starts from.
bool isUsableFrame(const ScreenRect& rect);

} // namespace notch
