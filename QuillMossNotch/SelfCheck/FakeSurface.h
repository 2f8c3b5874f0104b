// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotchPanel/NotchSurface.h"

#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace notch {

// A panel that is only a record of what was done to it.
class FakeSurface : public NotchSurface {
public:
    Rect current{400, 0, 480, 32};
    std::vector<std::pair<Rect, double>> applied; // With its surface's width.
    bool onScreen = true;
    int raises = 0;
    bool coverWatched = false;
    bool key = false;
    std::optional<Point> pointer;

    Room room = Room::frame;

    Rect frame() const override { return current; }
    void setRoom(Room wanted) override { room = wanted; }
    void applyFrame(const Rect& frame, double surfaceWidth) override
    {
        current = frame;
        applied.emplace_back(frame, surfaceWidth);
    }
    double fitContent(double, double) override { return current.height; }
    bool isOnScreen() const override { return onScreen; }
    void bringToFront() override { ++raises; }
    void watchCover(bool watched) override { coverWatched = watched; }
    bool isKeyWindow() const override { return key; }
    void resignKeyWindow() override { key = false; }
    std::optional<Point> pointerPosition() const override { return pointer; }

    // Frame and surface now, as "x,y widthxheight/surface", and whether the window is only as wide.
    std::string text() const
    {
        if (applied.empty())
            return "never";
        const auto& [rect, surfaceWidth] = applied.back();
        std::ostringstream text;
        text << rect.x << ',' << rect.y << ' ' << rect.width << 'x' << rect.height << '/'
             << surfaceWidth << (room == Room::surface ? " narrow" : "");
        return text.str();
    }
};

} // namespace notch
