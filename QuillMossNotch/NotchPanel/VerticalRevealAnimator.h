// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/MainQueue.h"
#include "Foundation/Time.h"
#include "Geometry/PanelGeometry.h"
#include "NotchPanel/NotchSurface.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace notch {

// Opens and closes the notch: changes the panel's height and the drawn surface's width step by
// step, while left edge, top edge and width of the panel stay. A new target takes over from
// wherever the surface is, and what the old one would have called at its end is never called.
// Main thread.
class VerticalRevealAnimator {
public:
    enum class Motion : std::uint8_t { immediate, animated };

    static constexpr Seconds duration{0.24};
    static constexpr Seconds step{1.0 / 60};

    // All must outlive it.
    VerticalRevealAnimator(NotchSurface& window, const Clock& clock, MainQueue& queue,
        double surfaceWidth = maximumPanelWidth);

    // Runs at every applied frame.
    std::function<void()> frameDidChange;

    // Without a surface width it is the frame's. `completion` runs when the target is reached,
    // which may be before this returns; not when the running animation already goes there.
    void animate(const Rect& targetFrame, std::optional<double> targetSurfaceWidth, Motion motion,
        std::function<void()> completion);
    // Ends a running animation where it is; nothing is called.
    void stop();

    bool isAnimating() const { return isAnimating_; }
    double surfaceWidth() const { return surfaceWidth_; }

private:
    struct Extent {
        double height = 0;
        double surfaceWidth = 0;
    };

    bool isThere(const Rect& current) const;
    void start(const Rect& current);
    void scheduleStep();
    void runStep();
    void finish();
    void apply(const Rect& frame, double surfaceWidth);

    NotchSurface& window_;
    const Clock& clock_;
    MainQueue& queue_;
    bool isAnimating_ = false;
    double surfaceWidth_;
    std::optional<Rect> targetFrame_;
    double targetSurfaceWidth_ = 0;
    std::function<void()> completion_;
    Uptime startedAt_;
    Extent startExtent_;
    DelayedWork timer_;
};

} // namespace notch
