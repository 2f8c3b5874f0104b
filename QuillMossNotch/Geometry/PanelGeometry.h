// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Geometry/Rect.h"

#include <optional>
#include <span>

namespace notch {

// The expanded surface's width, where the screen has room for it.
inline constexpr double maximumPanelWidth = 480;
// Of a notch, and in the place of one on a display that has none.
inline constexpr double minimumNotchHeight = 8;
// The collapsed surface is higher than the notch by this, for its words.
inline constexpr double compactTextHeight = 24;

// What the layout must know of a screen. A display without a notch of its own has no top inset and
// no areas beside it.
struct ScreenRecord {
    Rect frame;
    double topInset = 0;
    std::optional<Rect> auxiliaryTopLeftArea;
    std::optional<Rect> auxiliaryTopRightArea;

    bool operator==(const ScreenRecord&) const = default;
};

// The panel's measures on one screen, in points.
struct PanelMetrics {
    double notchHeight = 0;
    double panelWidth = 0; // Of the expanded surface, and of the panel at all times.
    double compactWidth = 0; // Of the collapsed surface.

    bool operator==(const PanelMetrics&) const = default;
};

// The first screen with a notch of its own, else the first; null without any screen.
const ScreenRecord* notchScreen(std::span<const ScreenRecord> screens);
PanelMetrics panelMetrics(const ScreenRecord& screen);
// Centred, hanging from the screen's top edge.
Rect panelFrame(const ScreenRecord& screen, double panelWidth, double height);

// `width` as a surface within a panel of `frameWidth` may have it.
double boundedSurfaceWidth(double width, double frameWidth);
// The pointer is on the drawn surface, which is centred in `frame`.
bool hitsSurface(Point pointer, const Rect& frame, double surfaceWidth);

} // namespace notch
