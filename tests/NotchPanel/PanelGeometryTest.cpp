// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchPanel/PanelGeometry.h"

#include <gtest/gtest.h>

#include <vector>

namespace notch {
namespace {

ScreenRecord screen(double width, double inset = 0)
{
    return {.frame = {0, 0, width, 800}, .topInset = inset};
}

// A notch of this width in the middle of a screen.
ScreenRecord notched(double notchWidth, double inset = 38)
{
    auto record = screen(1512, inset);
    const double side = (1512 - notchWidth) / 2;
    record.auxiliaryTopLeftArea = Rect{0, 0, side, inset};
    record.auxiliaryTopRightArea = Rect{1512 - side, 0, side, inset};
    return record;
}

ScreenRecord halfKnown()
{
    auto record = notched(300);
    record.auxiliaryTopRightArea.reset();
    return record;
}

TEST(PanelGeometry, choosesTheFirstNotchedScreen)
{
    struct Row {
        const char* name;
        std::vector<ScreenRecord> screens;
        int chosen;
    };
    const Row rows[] = {
        {"no screen", {}, -1},
        {"none is notched: the first", {screen(800), screen(1920)}, 0},
        {"the notched one, wherever it stands", {screen(800), notched(200), notched(250)}, 1},
    };
    for (const auto& [name, screens, chosen] : rows) {
        const auto* found = notchScreen(screens);
        EXPECT_EQ(found ? found - screens.data() : -1, chosen) << name;
    }
}

TEST(PanelGeometry, measuresFollowTheScreen)
{
    struct Row {
        const char* name;
        ScreenRecord screen;
        PanelMetrics metrics;
    };
    const Row rows[] = {
        {"no notch", screen(1920), {8, 480, 236}},
        {"an inset below the minimum", screen(1920, 7), {8, 480, 236}},
        {"an inset above it", screen(1920, 9), {9, 480, 236}},
        {"a narrow screen", screen(400), {8, 368, 236}},
        {"the widest that keeps its margins", screen(512), {8, 480, 236}},
        {"a screen narrower than the collapsed notch", screen(250), {8, 218, 218}},
        {"a notch of 250", notched(250), {38, 480, 286}},
        {"a notch of 460 stays within the panel", notched(460), {38, 480, 480}},
        {"a notch below 200 counts as 200", notched(199), {38, 480, 236}},
        {"one side unknown", halfKnown(), {38, 480, 236}},
    };
    for (const auto& [name, record, metrics] : rows)
        EXPECT_EQ(panelMetrics(record), metrics) << name;
}

TEST(PanelGeometry, frameHangsFromTheMiddleOfTheTopEdge)
{
    const ScreenRecord second{.frame = {1280, 240, 1025, 768}};
    EXPECT_EQ(panelFrame(second, 480, 310), (Rect{1552.5, 240, 480, 310}));
}

TEST(PanelGeometry, hitRegionIsTheSurfaceInTheMiddleOfTheFrame)
{
    struct Row {
        const char* name;
        Point pointer;
        double surfaceWidth;
        bool hit;
    };
    const Rect frame{400, 100, 480, 300};
    const Row rows[] = {
        {"in the middle", {640, 250}, 480, true},
        {"above the frame", {640, 99.9}, 480, false},
        {"below the frame", {640, 400}, 480, false},
        {"left of the frame", {399.9, 100}, 480, false},
        {"under the left shoulder", {405, 110}, 480, false},
        {"beyond the lower right corner", {878, 399}, 480, false},
        {"beside a narrower surface", {515, 250}, 240, false},
        {"on a narrower surface's left side", {533, 250}, 240, true},
        {"a surface wider than the frame is as wide", {413, 250}, 9999, true},
    };
    for (const auto& [name, pointer, surfaceWidth, hit] : rows)
        EXPECT_EQ(hitsSurface(pointer, frame, surfaceWidth), hit) << name;
}

} // namespace
} // namespace notch
