// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchPanel/VerticalRevealAnimator.h"

#include "Geometry/PanelGeometry.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace notch {

namespace {

constexpr double sameEdge = 0.01;
constexpr double sameExtent = 0.5;

double eased(double p)
{
    return p * p * (3 - 2 * p);
}

double between(double from, double to, double fraction)
{
    return from + (to - from) * fraction;
}

bool sameEdges(const Rect& a, const Rect& b)
{
    return std::abs(a.x - b.x) < sameEdge && std::abs(a.width - b.width) < sameEdge
        && std::abs(a.y - b.y) < sameEdge;
}

} // namespace

VerticalRevealAnimator::VerticalRevealAnimator(
    NotchSurface& window, const Clock& clock, MainQueue& queue, double surfaceWidth)
    : window_(window)
    , clock_(clock)
    , queue_(queue)
    , surfaceWidth_(surfaceWidth)
{
}

void VerticalRevealAnimator::animate(const Rect& targetFrame,
    std::optional<double> targetSurfaceWidth, Motion motion, std::function<void()> completion)
{
    const double width =
        boundedSurfaceWidth(targetSurfaceWidth.value_or(targetFrame.width), targetFrame.width);
    if (isAnimating_ && targetFrame_ == targetFrame && targetSurfaceWidth_ == width)
        return;
    stop();
    targetFrame_ = targetFrame;
    targetSurfaceWidth_ = width;
    completion_ = std::move(completion);
    const Rect current = window_.frame();
    if (motion == Motion::immediate || !sameEdges(current, targetFrame) || isThere(current))
        finish();
    else
        start(current);
}

void VerticalRevealAnimator::stop()
{
    timer_.cancel();
    isAnimating_ = false;
    completion_ = nullptr;
}

bool VerticalRevealAnimator::isThere(const Rect& current) const
{
    return std::abs(current.height - targetFrame_->height) <= sameExtent
        && std::abs(surfaceWidth_ - targetSurfaceWidth_) <= sameExtent;
}

void VerticalRevealAnimator::start(const Rect& current)
{
    startedAt_ = clock_.uptime();
    startExtent_ = {current.height, surfaceWidth_};
    isAnimating_ = true;
    scheduleStep();
}

// Steps lie on a grid from the start, so that a late one does not delay all that follow.
void VerticalRevealAnimator::scheduleStep()
{
    const Seconds elapsed = clock_.uptime() - startedAt_;
    const Seconds next = (std::floor(elapsed / step + 1e-6) + 1) * step;
    timer_ = queue_.after(next - elapsed, [this] { runStep(); });
}

void VerticalRevealAnimator::runStep()
{
    const double p = std::clamp((clock_.uptime() - startedAt_) / duration, 0.0, 1.0);
    if (p >= 1) {
        finish();
        return;
    }
    scheduleStep(); // Before the callback, which may ask for another target.
    const double e = eased(p);
    Rect frame = *targetFrame_;
    frame.height = between(startExtent_.height, targetFrame_->height, e);
    apply(frame, between(startExtent_.surfaceWidth, targetSurfaceWidth_, e));
}

void VerticalRevealAnimator::finish()
{
    const auto completion = std::exchange(completion_, nullptr);
    stop();
    apply(*targetFrame_, targetSurfaceWidth_);
    if (completion)
        completion();
}

void VerticalRevealAnimator::apply(const Rect& frame, double surfaceWidth)
{
    surfaceWidth_ = surfaceWidth;
    window_.applyFrame(frame, surfaceWidth);
    if (frameDidChange)
        frameDidChange();
}

} // namespace notch
