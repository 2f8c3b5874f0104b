// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Geometry/Rect.h"

#include <cstdint>
#include <optional>

namespace notch {

// The panel as layout, animation and hit test see it: a window in the application, a record in
// tests. Main thread.
class NotchSurface {
public:
    virtual ~NotchSurface() = default;

    // How wide the window itself is: as its frame, so that no step of a motion resizes it, or only
    // as the drawn surface.
    enum class Room : std::uint8_t { frame, surface };

    virtual Rect frame() const = 0;
    // At once; what is drawn stays where it is on the screen.
    virtual void setRoom(Room room) = 0;
    // Frame, drawn surface and click-through region change as one and are on the screen at once.
    virtual void applyFrame(const Rect& frame, double surfaceWidth) = 0;
    // Brings the content up to date and lays it out at this width, no higher than that if it can
    // be. Returns the height that it needs.
    virtual double fitContent(double width, double maxHeight) = 0;

    virtual bool isOnScreen() const = 0;
    // Above every other window, if it is on the screen; the keyboard stays where it is.
    virtual void bringToFront() = 0;
    // Whether to find out that other windows lie over the surface, which costs a wake at every
    // change on the desktop.
    virtual void watchCover(bool watched) = 0;
    virtual bool isKeyWindow() const = 0;
    // Gives the keyboard back to the window that had it. Nothing unless this one is key.
    virtual void resignKeyWindow() = 0;
    // Where the pointer is, in desktop coordinates: the middle of its pixel. Nothing when it is on
    // no screen of this desktop, or not on a window of this program.
    virtual std::optional<Point> pointerPosition() const = 0;
};

} // namespace notch
