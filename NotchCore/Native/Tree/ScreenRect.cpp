// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Tree/ScreenRect.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace notch {

ScreenRect ScreenRect::grownBy(double points) const
{
    return {x - points, y - points, width + 2 * points, height + 2 * points};
}

bool ScreenRect::contains(const ScreenRect& other) const
{
    return minX() <= other.minX() && minY() <= other.minY() && maxX() >= other.maxX()
        && maxY() >= other.maxY();
}

bool ScreenRect::intersects(const ScreenRect& other) const
{
    return !isEmpty() && !other.isEmpty() && minX() < other.maxX() && other.minX() < maxX()
        && minY() < other.maxY() && other.minY() < maxY();
}

bool isUsableFrame(const ScreenRect& rect)
{
    const std::array numbers{rect.x, rect.y, rect.width, rect.height, rect.maxX(), rect.maxY()};
    const bool finite = std::ranges::all_of(numbers, [](double n) { return std::isfinite(n); });
    return finite && !rect.isEmpty();
}

} // namespace notch
