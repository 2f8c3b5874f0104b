// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

namespace notch {

// Places and sizes on the desktop, in points. The origin is at the top left and y grows downward,
// so a rectangle's top edge is its y.
struct Point {
    double x = 0;
    double y = 0;

    bool operator==(const Point&) const = default;
};

struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    double midX() const { return x + width / 2; }
    // The right and the bottom edge are outside, so that two neighbours never share a point.
    bool contains(Point p) const
    {
        return p.x >= x && p.x < x + width && p.y >= y && p.y < y + height;
    }

    bool operator==(const Rect&) const = default;
};

} // namespace notch
