// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Geometry/PanelGeometry.h"

#include <gtest/gtest.h>

#include <vector>

namespace notch {
namespace {

ScreenRecord screen(double width, double inset = 0)
{
    return {.frame = {0, 0, width, 800}, .topInset = inset};
}

// A notch of this width in the middle of a screen.
ScreenRecord notched(double notchWidth)
{
    auto record = screen(1512, 38);
    const double side = (1512 - notchWidth) / 2;
    record.auxiliaryTopLeftArea = Rect{0, 0, side, 38};
    record.auxiliaryTopRightArea = Rect{1512 - side, 0, side, 38};
    return record;
}

TEST(PanelGeometry, choosesTheFirstNotchedScreenElseTheFirst)
{
    EXPECT_EQ(notchScreen({}), nullptr);
    std::vector screens{screen(800), screen(1920)};
    EXPECT_EQ(notchScreen(screens), &screens[0]);
    screens = {screen(800), notched(200), notched(250)};
    EXPECT_EQ(notchScreen(screens), &screens[1]);
}

TEST(PanelGeometry, measuresFollowTheScreen)
{
    auto halfKnown = notched(300);
    halfKnown.auxiliaryTopRightArea.reset();
    const struct {
        const char* name;
        ScreenRecord screen;
        PanelMetrics metrics;
    } rows[] = {
        {"an inset below the minimum", screen(1920, 7), {8, 480, 236}},
        {"an inset above it", screen(1920, 9), {9, 480, 236}},
        {"a screen narrower than the collapsed notch", screen(250), {8, 218, 218}},
        {"a notch of 250", notched(250), {38, 480, 286}},
        {"a notch of 460 stays within the panel", notched(460), {38, 480, 480}},
        {"a notch below 200 counts as 200", notched(199), {38, 480, 236}},
        {"one side unknown", halfKnown, {38, 480, 236}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(panelMetrics(row.screen), row.metrics) << row.name;
}

} // namespace
} // namespace notch
