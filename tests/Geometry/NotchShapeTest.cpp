// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Geometry/NotchShape.h"

#include <gtest/gtest.h>

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
