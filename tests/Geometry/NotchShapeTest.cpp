// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Geometry/NotchShape.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>
#include <string>
#include <utility>

namespace notch {
namespace {

std::string path(const NotchShape& shape)
{
    std::ostringstream text;
    for (const auto& [kind, end, control] : shape.elements()) {
        text << "MLQZ"[static_cast<int>(kind)];
        if (kind == NotchShape::Element::Kind::curve)
            text << control.x << ',' << control.y << ' ';
        text << end.x << ',' << end.y << ' ';
    }
    return text.str();
}

TEST(NotchShape, runsDownTheLeftSideAndUpTheRight)
{
    EXPECT_EQ(path(NotchShape(480, 300)),
        "M0,0 Q12,0 12,12 L12,276 Q12,300 36,300 L444,300 Q468,300 468,276 L468,12 Q468,0 480,0 "
        "Z0,0 ");
}

TEST(NotchShape, containsWhatIsWithinItsCurves)
{
    const struct {
        const char* name;
        Point point;
        bool inside;
    } rows[] = {
        {"the top edge is the full width", {0.5, 0.001}, true},
        {"above the top edge", {240, -0.001}, false},
        {"beside the shoulder's curve", {3, 0.5}, false},
        {"within the shoulder's curve, which is outward", {6, 0.5}, true},
        {"beside the body", {11.9, 150}, false},
        {"the body's left side", {12.1, 150}, true},
        {"within the lower corner, which is inward", {20, 292}, true},
        {"beyond the lower corner", {16, 296}, false},
        {"just above the lower edge", {240, 299.9}, true},
        {"below the lower edge", {240, 300}, false},
    };
    const NotchShape shape(480, 300);
    for (const auto& row : rows) {
        EXPECT_EQ(shape.contains(row.point), row.inside) << row.name;
        EXPECT_EQ(shape.contains({480 - row.point.x, row.point.y}), row.inside) << row.name;
    }
}

TEST(NotchShape, isOnePieceWithoutNeckAtEverySize)
{
    for (double height = 32; height <= 100; height += 0.5) {
        double above = std::min(480.0, 236 + (height - 32));
        const NotchShape shape(above, height);
        for (double y = 0.25; y < height; y += 0.5) {
            const auto spans = shape.spansAt(y);
            ASSERT_EQ(spans.size(), 1U) << height << " high, at " << y;
            const double here = spans[0].right - spans[0].left;
            ASSERT_LE(here, above + 1e-9) << height << " high, at " << y;
            ASSERT_GT(here, 0);
            above = here;
        }
    }
}

TEST(PixelsInside, areThoseWhoseCentreIsInTheShape)
{
    constexpr double offset = 120.01; // No pixel's centre lies exactly on an edge.
    const NotchShape shape(240, 61.5);
    for (const double scale : {1.0, 1.5, 2.0}) {
        std::multiset<std::pair<int, int>> given;
        for (const auto& p : pixelsInside(shape, offset, scale))
            for (int y = p.y; y < p.y + p.height; ++y)
                for (int x = p.x; x < p.x + p.width; ++x)
                    given.emplace(y, x);
        std::multiset<std::pair<int, int>> expected;
        for (int y = 0; y < 200; ++y)
            for (int x = 0; x < 960; ++x)
                if (shape.contains({(x + 0.5) / scale - offset, (y + 0.5) / scale}))
                    expected.emplace(y, x);
        EXPECT_EQ(given, expected) << "at scale " << scale;
    }
}

} // namespace
} // namespace notch
