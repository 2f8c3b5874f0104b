// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchPanel/VerticalRevealAnimator.h"

#include "FakeSurface.h"
#include "support/VirtualTime.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>

namespace notch {
namespace {

using Motion = VerticalRevealAnimator::Motion;

constexpr Rect closed{400, 0, 480, 32};
constexpr Rect open{400, 0, 480, 300};
constexpr double closedWidth = 236;
constexpr double openWidth = 480;

class VerticalReveal : public testing::Test {
protected:
    void to(
        const Rect& frame, double width, const std::string& name, Motion motion = Motion::animated)
    {
        animator.animate(frame, width, motion, [this, name] { ended += name; });
    }
    double height() const { return panel.current.height; }

    FakeSurface panel;
    VirtualTime time;
    VerticalRevealAnimator animator{panel, time, time, closedWidth};
    std::string ended; // The completions that ran.
};

TEST_F(VerticalReveal, growsDownwardOnlyAndEndsOnTheTargetAfterItsDuration)
{
    to(open, openWidth, "open;");
    time.advance(VerticalRevealAnimator::duration - Seconds{0.001});
    EXPECT_EQ(ended, "");
    EXPECT_TRUE(animator.isAnimating());
    EXPECT_GE(panel.applied.size(), 14U);
    double lastHeight = closed.height;
    double lastWidth = closedWidth;
    for (const auto& [frame, width] : panel.applied) {
        EXPECT_EQ((Rect{frame.x, frame.y, frame.width, 0}), (Rect{400, 0, 480, 0}));
        EXPECT_GT(frame.height, lastHeight);
        EXPECT_GT(width, lastWidth);
        lastHeight = frame.height;
        lastWidth = width;
    }
    EXPECT_LT(lastHeight, open.height);
    time.advance(VerticalRevealAnimator::step);
    EXPECT_EQ(ended, "open;");
    EXPECT_EQ(panel.text(), "400,0 480x300/480");
    EXPECT_FALSE(animator.isAnimating());
    EXPECT_EQ(time.timers(), 0U);
}

TEST_F(VerticalReveal, isHalfOpenAfterHalfItsTimeAndSlowAtBothEnds)
{
    to(open, openWidth, "open;");
    time.advance(VerticalRevealAnimator::step); // Progress 1/14.4.
    const double p = 1 / 14.4;
    EXPECT_NEAR(height(), 32 + 268 * p * p * (3 - 2 * p), 1e-6);
    time.advance(6 * VerticalRevealAnimator::step);
    const double later = 7 / 14.4;
    EXPECT_NEAR(height(), 32 + 268 * later * later * (3 - 2 * later), 1e-6);
}

TEST_F(VerticalReveal, reversesFromWhereItIsAndForgetsTheOldCompletion)
{
    to(open, openWidth, "open;");
    time.advance(Seconds{0.12});
    const double turningPoint = height();
    const auto steps = panel.applied.size();
    to(closed, closedWidth, "closed;");
    EXPECT_EQ(panel.applied.size(), steps);
    time.advance(VerticalRevealAnimator::step);
    EXPECT_LT(height(), turningPoint);
    EXPECT_GT(height(), turningPoint - 5);
    time.advance(Seconds{1});
    EXPECT_EQ(panel.text(), "400,0 480x32/236");
    EXPECT_EQ(ended, "closed;");
}

TEST_F(VerticalReveal, sameTargetDoesNotStartAnew)
{
    to(open, openWidth, "first;");
    for (int i = 0; i < 24; ++i) {
        time.advance(Seconds{0.01});
        to(open, openWidth, "again;");
    }
    time.advance(VerticalRevealAnimator::step);
    EXPECT_EQ(panel.text(), "400,0 480x300/480");
    EXPECT_EQ(ended.substr(0, 6), "first;");
}

TEST_F(VerticalReveal, stopEndsItWithoutCompletion)
{
    to(open, openWidth, "open;");
    time.advance(Seconds{0.1});
    animator.stop();
    const double stoppedAt = height();
    time.advance(Seconds{1});
    EXPECT_EQ(height(), stoppedAt);
    EXPECT_EQ(ended, "");
}

TEST_F(VerticalReveal, jumpsWhereThereIsNothingToUncover)
{
    struct Row {
        const char* name;
        Rect target;
        double width;
        Motion motion;
        bool animated;
    };
    const Row rows[] = {
        {"reduced motion", open, openWidth, Motion::immediate, false},
        {"another left edge", {400.0101, 0, 480, 300}, openWidth, Motion::animated, false},
        {"another width", {400, 0, 480.0101, 300}, openWidth, Motion::animated, false},
        {"another top edge", {400, -0.0101, 480, 300}, openWidth, Motion::animated, false},
        {"as good as there", {400, 0, 480, 32.5}, closedWidth + 0.5, Motion::animated, false},
        {"a little higher", {400, 0, 480, 32.51}, closedWidth, Motion::animated, true},
        {"a little wider", closed, closedWidth - 0.51, Motion::animated, true},
        {"edges as good as the same", {400.009, 0, 480, 300}, openWidth, Motion::animated, true},
    };
    for (const auto& [name, target, width, motion, animated] : rows) {
        animator.animate(closed, closedWidth, Motion::immediate, {});
        ended.clear();
        to(target, width, "end;", motion);
        EXPECT_EQ(animator.isAnimating(), animated) << name;
        EXPECT_EQ(ended, animated ? "" : "end;") << name;
        EXPECT_EQ(panel.current == target, !animated || target == closed) << name;
        EXPECT_EQ(time.timers(), animated ? 1U : 0U) << name;
        animator.stop();
    }
}

TEST_F(VerticalReveal, boundsTheSurfaceWidth)
{
    struct Row {
        std::optional<double> given;
        double applied;
    };
    for (const auto& [given, applied] : {Row{{}, 480}, Row{500, 480}, Row{0, 1}, Row{300, 300}}) {
        animator.animate(open, given, Motion::immediate, {});
        EXPECT_EQ(animator.surfaceWidth(), applied);
    }
}

TEST_F(VerticalReveal, newTargetFromWithinAStepIsTakenUp)
{
    bool turned = false;
    animator.frameDidChange = [&] {
        if (!std::exchange(turned, true))
            to(closed, closedWidth, "closed;");
    };
    to(open, openWidth, "open;");
    time.advance(Seconds{1});
    EXPECT_EQ(panel.text(), "400,0 480x32/236");
    EXPECT_EQ(ended, "closed;");
    EXPECT_EQ(time.timers(), 0U);
}

} // namespace
} // namespace notch
