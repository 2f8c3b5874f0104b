// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Geometry/Rect.h"

#include <array>
#include <cstdint>
#include <vector>

namespace notch {

// The one outline of the black surface, compact and expanded alike: clip of the content, hit region
// and input shape. Concave shoulders join it to the screen's top edge, so that the surface seems to
// grow out of the display; below it ends in convex corners. A function of a size; the origin is its
// top left corner.
class NotchShape {
public:
    static constexpr double shoulder = 12;
    static constexpr double lowerCorner = 24;

    // One step of the closed contour. `control` counts for curves only; those are quadratic.
    struct Element {
        enum class Kind : std::uint8_t { move, line, curve, close };

        Kind kind = Kind::close;
        Point end;
        Point control;

        bool operator==(const Element&) const = default;
    };
    // The inside from `left` up to, not including, `right`.
    struct Span {
        double left = 0;
        double right = 0;
    };

    NotchShape(double width, double height);

    double height() const { return height_; }
    const std::array<Element, 9>& elements() const { return elements_; }
    // By the non-zero winding rule.
    bool contains(Point point) const;
    // What a horizontal line at `y` has inside, from left to right.
    std::vector<Span> spansAt(double y) const;

private:
    double height_;
    std::array<Element, 9> elements_;
};

// A rectangle of device pixels.
struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool operator==(const PixelRect&) const = default;
};

// The pixels whose centre is in the shape, moved right by `offset` points, at `scale` device pixels
// a point. Rows of the same extent are one rectangle; sorted by y, then x, none overlap.
std::vector<PixelRect> pixelsInside(const NotchShape& shape, double offset, double scale);

} // namespace notch
