// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Geometry/NotchShape.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace notch {

namespace {

// Where the contour passes a horizontal line: +1 on its way down, -1 on its way up.
struct Crossing {
    double x = 0;
    int direction = 0;
};

double interpolate(double a, double control, double b, double t)
{
    return (1 - t) * (1 - t) * a + 2 * t * (1 - t) * control + t * t * b;
}

// Every curve of the contour is monotonic in y and no straight line, so it meets `y` once, where
// its slope has the sign of its direction.
double curveXAt(Point start, const NotchShape::Element& curve, double y, int direction)
{
    const double a = start.y - 2 * curve.control.y + curve.end.y;
    const double b = 2 * (curve.control.y - start.y);
    const double root = std::sqrt(std::max(0.0, b * b - 4 * a * (start.y - y)));
    const double t = std::clamp((direction * root - b) / (2 * a), 0.0, 1.0);
    return interpolate(start.x, curve.control.x, curve.end.x, t);
}

double lineXAt(Point start, Point end, double y)
{
    return start.x + (end.x - start.x) * (y - start.y) / (end.y - start.y);
}

// An end that lies on the line counts for the step that goes on below it: no corner counts twice.
std::vector<Crossing> crossingsAt(const NotchShape& shape, double y)
{
    std::vector<Crossing> crossings;
    Point at;
    for (const auto& step : shape.elements()) {
        const auto start = std::exchange(at, step.end);
        if (step.kind == NotchShape::Element::Kind::move || (start.y <= y) == (step.end.y <= y))
            continue;
        const int direction = step.end.y > start.y ? 1 : -1;
        const double x = step.kind == NotchShape::Element::Kind::curve
                           ? curveXAt(start, step, y, direction)
                           : lineXAt(start, step.end, y);
        crossings.push_back({x, direction});
    }
    std::ranges::sort(crossings, {}, &Crossing::x);
    return crossings;
}

} // namespace

NotchShape::NotchShape(double width, double height)
    : height_(height)
{
    using enum Element::Kind;
    const double w = width;
    const double h = height;
    const double s = shoulder;
    // A surface lower than shoulder and corner together would turn back on itself here and leave a
    // hairline of nothing beside its body; the compact notch of a display without inset is one.
    const double side = std::max(s, h - lowerCorner);
    const double corner = s + lowerCorner;
    elements_ = {{
        {move, {0, 0}, {}},
        {curve, {s, s}, {s, 0}},
        {line, {s, side}, {}},
        {curve, {corner, h}, {s, h}},
        {line, {w - corner, h}, {}},
        {curve, {w - s, side}, {w - s, h}},
        {line, {w - s, s}, {}},
        {curve, {w, 0}, {w - s, 0}},
        {close, {0, 0}, {}},
    }};
}

std::vector<NotchShape::Span> NotchShape::spansAt(double y) const
{
    std::vector<Span> spans;
    int winding = 0;
    for (const auto& [x, direction] : crossingsAt(*this, y)) {
        if (winding == 0)
            spans.push_back({x, x});
        winding += direction;
        spans.back().right = x;
    }
    return spans;
}

bool NotchShape::contains(Point point) const
{
    return std::ranges::any_of(spansAt(point.y),
        [&](const Span& span) { return point.x >= span.left && point.x < span.right; });
}

std::vector<PixelRect> pixelsInside(const NotchShape& shape, double offset, double scale)
{
    std::vector<PixelRect> pixels;
    const auto column = [&](double x) {
        return static_cast<int>(std::ceil((x + offset) * scale - 0.5));
    };
    const int rows = static_cast<int>(std::ceil(shape.height() * scale));
    for (int y = 0; y < rows; ++y) {
        for (const auto& [left, right] : shape.spansAt((y + 0.5) / scale)) {
            const PixelRect row{column(left), y, column(right) - column(left), 1};
            auto* above = pixels.empty() ? nullptr : &pixels.back();
            if (above && above->x == row.x && above->width == row.width
                && above->y + above->height == y)
                ++above->height;
            else if (row.width > 0)
                pixels.push_back(row);
        }
    }
    return pixels;
}

} // namespace notch
