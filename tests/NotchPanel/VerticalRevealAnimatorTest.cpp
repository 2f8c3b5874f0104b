// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchPanel/VerticalRevealAnimator.h"

#include "FakeSurface.h"
#include "Rehearsal/VirtualTime.h"

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
    void to(const Rect& frame, std::optional<double> width, const std::string& name,
        Motion motion = Motion::animated)
    {
        animator.animate(frame, width, motion, [this, name] { ended += name; });
    }
    void toOpen() { to(open, openWidth, "open;"); }
    void toClosed() { to(closed, closedWidth, "closed;"); }

    FakeSurface panel;
    VirtualTime time;
    VerticalRevealAnimator animator{panel, time, time, closedWidth};
    std::string ended; // The completions that ran.
};

TEST_F(VerticalReveal, growsDownwardSlowlyAtBothEndsHoweverOftenItIsTold)
{
    toOpen();
    for (int i = 0; i < 23; ++i) {
        time.advance(Seconds{0.01});
        to(open, openWidth, "again;");
    }
    time.advance(Seconds{0.009});
    EXPECT_EQ(ended, "");
    EXPECT_TRUE(animator.isAnimating());
    ASSERT_EQ(panel.applied.size(), 14U);
    double p = 0;
    for (const auto& [frame, width] : panel.applied) {
        p += VerticalRevealAnimator::step / VerticalRevealAnimator::duration;
        const double eased = p * p * (3 - 2 * p);
        EXPECT_EQ((Rect{frame.x, frame.y, frame.width, 0}), (Rect{400, 0, 480, 0}));
        EXPECT_NEAR(frame.height, 32 + 268 * eased, 1e-6);
        EXPECT_NEAR(width, 236 + 244 * eased, 1e-6);
    }
    time.advance(VerticalRevealAnimator::step);
    EXPECT_EQ(ended, "open;");
    EXPECT_EQ(panel.text(), "400,0 480x300/480");
    EXPECT_FALSE(animator.isAnimating());
    EXPECT_EQ(time.timers(), 0U);
}

TEST_F(VerticalReveal, reversesFromWhereItIsEvenWithinAStepAndForgetsTheOldCompletion)
{
    std::size_t steps = 0;
    animator.frameDidChange = [&] {
        if (panel.current.height > 150 && steps == 0) {
            steps = panel.applied.size();
            toClosed();
        }
    };
    toOpen();
    time.advance(Seconds{1});
    const double turningPoint = panel.applied.at(steps - 1).first.height;
    const double next = panel.applied.at(steps).first.height;
    EXPECT_LT(next, turningPoint);
    EXPECT_GT(next, turningPoint - 5);
    EXPECT_EQ(panel.text(), "400,0 480x32/236");
    EXPECT_EQ(ended, "closed;");
    EXPECT_EQ(time.timers(), 0U);
}

TEST_F(VerticalReveal, stopEndsItWithoutCompletionEvenWithinAStep)
{
    animator.frameDidChange = [this] {
        if (panel.applied.size() == 6)
            animator.stop();
    };
    toOpen();
    time.advance(Seconds{1});
    EXPECT_EQ(panel.applied.size(), 6U);
    EXPECT_EQ(ended, "");
    EXPECT_FALSE(animator.isAnimating());
}

TEST_F(VerticalReveal, jumpsWhereThereIsNothingToUncover)
{
    const struct {
        const char* name;
        Rect target;
        std::optional<double> width;
        double boundedWidth;
        Motion motion;
        bool animated;
    } rows[] = {
        {"reduced motion", open, {}, 480, Motion::immediate, false},
        {"another left edge", {400.0101, 0, 480, 300}, 500, 480, Motion::animated, false},
        {"another width", {400, 0, 480.0101, 300}, 0, 1, Motion::animated, false},
        {"another top edge", {400, -0.0101, 480, 300}, 300, 300, Motion::animated, false},
        {"as good as there", {400, 0, 480, 32.5}, 236.5, 236.5, Motion::animated, false},
        {"a little higher", {400, 0, 480, 32.51}, 236, 236, Motion::animated, true},
        {"a little wider", closed, 235.49, 235.49, Motion::animated, true},
        {"edges as good as the same", {400.009, 0, 480, 300}, {}, 480, Motion::animated, true},
    };
    for (const auto& row : rows) {
        animator.animate(closed, closedWidth, Motion::immediate, {});
        ended.clear();
        to(row.target, row.width, "end;", row.motion);
        EXPECT_EQ(animator.isAnimating(), row.animated) << row.name;
        EXPECT_EQ(ended, row.animated ? "" : "end;") << row.name;
        EXPECT_EQ(time.timers(), row.animated ? 1U : 0U) << row.name;
        time.advance(Seconds{1});
        EXPECT_EQ(panel.applied.back(), std::pair(row.target, row.boundedWidth)) << row.name;
        EXPECT_EQ(animator.surfaceWidth(), row.boundedWidth) << row.name;
    }
}

} // namespace
} // namespace notch
