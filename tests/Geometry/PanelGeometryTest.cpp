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

TEST(PanelGeometry, hitRegionIsTheSurfaceInTheMiddleOfTheFrame)
{
    const Rect frame{400, 100, 480, 300};
    const struct {
        const char* name;
        Point pointer;
        double surfaceWidth;
        bool hit;
    } rows[] = {
        {"above the frame", {640, 99.9}, 480, false},
        {"on its upper edge", {640, 100}, 480, true},
        {"below the frame", {640, 400}, 480, false},
        {"left of the frame", {399.9, 100}, 480, false},
        {"right of the frame", {880, 100}, 480, false},
        {"beyond the lower right corner", {878, 399}, 480, false},
        {"beside a narrower surface", {515, 250}, 240, false},
        {"on a narrower surface's left side", {533, 250}, 240, true},
        {"a surface wider than the frame is as wide", {413, 250}, 9999, true},
    };
    for (const auto& row : rows)
        EXPECT_EQ(hitsSurface(row.pointer, frame, row.surfaceWidth), row.hit) << row.name;
}

} // namespace
} // namespace notch
