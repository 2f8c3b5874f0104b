// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Geometry/NotchShape.h"
#include "Geometry/PanelGeometry.h"
#include "SelfCheck/MotionChecks.h"
#include "SelfCheck/Suite.h"

#include <algorithm>

namespace notch {
namespace {

struct PointerRow {
    const char* text;
    Point pointer; // Over a panel of 480 by 300, whose upper left corner is at 400, 100.
    double surfaceWidth;
    bool hit;
};

constexpr PointerRow pointers[] = {
    {"a click above the surface goes through", {640, 99.9}, 480, false},
    {"a click on the upper edge is on the surface", {640, 100}, 480, true},
    {"the surface is as wide as the panel at its upper edge", {400.5, 100.001}, 480, true},
    {"a click beside the curve of the shoulder goes through", {403, 100.5}, 480, false},
    {"the shoulder curves outward", {406, 100.5}, 480, true},
    {"a click left of the body goes through", {411.9, 250}, 480, false},
    {"the body's left side is on the surface", {412.1, 250}, 480, true},
    {"the body's right side is on the surface", {867.9, 250}, 480, true},
    {"a click right of the body goes through", {868.1, 250}, 480, false},
    {"the lower corner curves inward", {420, 392}, 480, true},
    {"a click beyond the lower left corner goes through", {416, 396}, 480, false},
    {"a click beyond the lower right corner goes through", {864, 396}, 480, false},
    {"a click just above the lower edge is on the surface", {640, 399.9}, 480, true},
    {"a click below the surface goes through", {640, 400}, 480, false},
    {"a click left of the panel goes through", {399.9, 100}, 480, false},
    {"a click right of the panel goes through", {880, 100}, 480, false},
    {"a click on the transparent side beside a narrower surface goes through", {515, 250}, 240,
        false},
    {"a narrower surface hangs in the middle of the panel", {533, 250}, 240, true},
    {"a surface is never wider than its panel", {413, 250}, 9999, true},
};

// A neck, a hole or a separate card would be a row that is wider than the one above it, or more
// than one piece of it.
bool isOnePiece(double width, double height)
{
    const NotchShape shape(width, height);
    double above = width;
    for (double y = 0.25; y < height; y += 0.5) {
        const auto spans = shape.spansAt(y);
        if (spans.size() != 1)
            return false;
        const double here = spans[0].right - spans[0].left;
        if (here <= 0 || here > above + 1e-9)
            return false;
        above = here;
    }
    return true;
}

bool isOnePieceWhileItGrows()
{
    for (double height = 32; height <= 100; height += 0.5) {
        if (!isOnePiece(std::min(480.0, 236 + (height - 32)), height))
            return false;
    }
    return true;
}

} // namespace

void checkSilhouette(Suite& suite)
{
    constexpr Rect panel{400, 100, 480, 300};
    for (const auto& [text, pointer, surfaceWidth, hit] : pointers)
        suite.check(text, hitsSurface(pointer, panel, surfaceWidth) == hit);
    suite.check("the silhouette is one piece without a neck at every size between compact and open",
        isOnePieceWhileItGrows());
}

} // namespace notch
