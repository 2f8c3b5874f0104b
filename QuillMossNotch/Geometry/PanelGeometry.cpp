// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Geometry/PanelGeometry.h"

#include "Geometry/NotchShape.h"

#include <algorithm>

namespace notch {

namespace {

constexpr double minimumNotchWidth = 200;
constexpr double screenMargins = 32; // Both sides together.
constexpr double compactMargins = 36; // The collapsed surface is wider than the notch by this.

double notchWidth(const ScreenRecord& screen)
{
    const auto& left = screen.auxiliaryTopLeftArea;
    const auto& right = screen.auxiliaryTopRightArea;
    if (!left || !right)
        return minimumNotchWidth;
    return std::max(minimumNotchWidth, right->x - (left->x + left->width));
}

} // namespace

const ScreenRecord* notchScreen(std::span<const ScreenRecord> screens)
{
    if (screens.empty())
        return nullptr;
    const auto notched =
        std::ranges::find_if(screens, [](const auto& screen) { return screen.topInset > 0; });
    return notched != screens.end() ? &*notched : &screens.front();
}

PanelMetrics panelMetrics(const ScreenRecord& screen)
{
    const double panelWidth = std::min(screen.frame.width - screenMargins, maximumPanelWidth);
    return {.notchHeight = std::max(minimumNotchHeight, screen.topInset),
        .panelWidth = panelWidth,
        .compactWidth = std::min(panelWidth, notchWidth(screen) + compactMargins)};
}

Rect panelFrame(const ScreenRecord& screen, double panelWidth, double height)
{
    return {screen.frame.midX() - panelWidth / 2, screen.frame.y, panelWidth, height};
}

double boundedSurfaceWidth(double width, double frameWidth)
{
    return std::max(1.0, std::min(width, frameWidth));
}

bool hitsSurface(Point pointer, const Rect& frame, double surfaceWidth)
{
    if (!frame.contains(pointer))
        return false;
    const double width = boundedSurfaceWidth(surfaceWidth, frame.width);
    const double offset = (frame.width - width) / 2;
    return NotchShape(width, frame.height)
        .contains({pointer.x - frame.x - offset, pointer.y - frame.y});
}

} // namespace notch
