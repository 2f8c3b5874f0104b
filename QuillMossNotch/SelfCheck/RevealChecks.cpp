// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchPanel/VerticalRevealAnimator.h"
#include "Rehearsal/VirtualTime.h"
#include "SelfCheck/FakeSurface.h"
#include "SelfCheck/MotionChecks.h"
#include "SelfCheck/Suite.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string>

namespace notch {
namespace {

using Motion = VerticalRevealAnimator::Motion;

constexpr Rect closed{400, 0, 480, 32};
constexpr Rect open{400, 0, 480, 300};
constexpr double closedWidth = 236;
constexpr double openWidth = 480;

// A panel that the animator moves, and which completions ran.
struct Reveal {
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
    std::string ended;
};

bool isNear(double found, double expected)
{
    return std::abs(found - expected) < 1e-6;
}

// At the fraction p of its time, between the closed and the open notch.
bool isEased(const std::pair<Rect, double>& applied, double p)
{
    const double eased = p * p * (3 - 2 * p);
    return isNear(applied.first.height, 32 + 268 * eased)
        && isNear(applied.second, 236 + 244 * eased);
}

void checkOpening(Suite& suite)
{
    Reveal reveal;
    reveal.toOpen();
    for (int i = 0; i < 23; ++i) {
        reveal.time.advance(Seconds{0.01});
        reveal.to(open, openWidth, "again;");
    }
    reveal.time.advance(Seconds{0.009});
    const auto& steps = reveal.panel.applied;
    suite.check("a reveal takes 0.24 seconds in 60 steps a second, however often it is asked for",
        steps.size() == 14 && reveal.animator.isAnimating() && reveal.ended.empty());
    suite.check("a reveal is vertical only: left edge, top edge and width stay at every step",
        std::ranges::all_of(steps, [](const auto& step) {
            return Rect{step.first.x, step.first.y, step.first.width, 0} == Rect{400, 0, 480, 0};
        }));
    double p = 0;
    suite.check("one surface grows from the compact width, slowly at both ends",
        std::ranges::all_of(steps, [&](const auto& step) {
            p += VerticalRevealAnimator::step / VerticalRevealAnimator::duration;
            return isEased(step, p);
        }));
    reveal.time.advance(VerticalRevealAnimator::step);
    suite.check("a reveal ends exactly at its target, tells so once, and leaves no timer",
        reveal.panel.text() == "400,0 480x300/480" && reveal.ended == "open;"
            && !reveal.animator.isAnimating() && reveal.time.timers() == 0);
}

void checkReversal(Suite& suite)
{
    Reveal reveal;
    std::size_t steps = 0;
    reveal.animator.frameDidChange = [&] { // Within a step, as when a click closes the notch.
        if (reveal.panel.current.height > 150 && steps == 0) {
            steps = reveal.panel.applied.size();
            reveal.toClosed();
        }
    };
    reveal.toOpen();
    reveal.time.advance(Seconds{1});
    const auto& applied = reveal.panel.applied;
    const bool turned = steps > 0 && steps < applied.size();
    const double jump = turned ? applied[steps - 1].first.height - applied[steps].first.height : 0;
    suite.check("a reversal in mid-animation goes on from where it is, without a jump",
        turned && jump > 0 && jump < 5);
    suite.check("a reversal ends at the newest target", reveal.panel.text(), "400,0 480x32/236");
    suite.check("the completion of a reveal that was reversed never runs", reveal.ended, "closed;");
    suite.check("a reversal leaves no timer", reveal.time.timers() == 0);
}

void checkStop(Suite& suite)
{
    Reveal reveal;
    reveal.animator.frameDidChange = [&] {
        if (reveal.panel.applied.size() == 6)
            reveal.animator.stop();
    };
    reveal.toOpen();
    reveal.time.advance(Seconds{1});
    suite.check("a reveal that is stopped moves no further and its completion never runs",
        reveal.panel.applied.size() == 6 && reveal.ended.empty() && !reveal.animator.isAnimating());
}

struct JumpRow {
    const char* text;
    Rect target;
    std::optional<double> width;
    double boundedWidth;
    Motion motion;
    bool animated;
};

constexpr JumpRow jumps[] = {
    {"with reduced motion the panel is there at once", open, {}, 480, Motion::immediate, false},
    {"another left edge is no reveal", {400.0101, 0, 480, 300}, 500, 480, Motion::animated, false},
    {"another width is no reveal", {400, 0, 480.0101, 300}, 0, 1, Motion::animated, false},
    {"another top edge is no reveal", {400, -0.0101, 480, 300}, 300, 300, Motion::animated, false},
    {"half a point is not worth a reveal", {400, 0, 480, 32.5}, 236.5, 236.5, Motion::animated,
        false},
    {"more than half a point of height is", {400, 0, 480, 32.51}, 236, 236, Motion::animated, true},
    {"more than half a point of the surface's width is", closed, 235.49, 235.49, Motion::animated,
        true},
    {"edges that differ by a rounding are the same", {400.009, 0, 480, 300}, {}, 480,
        Motion::animated, true},
};

bool goesAsSaid(const JumpRow& row)
{
    Reveal reveal;
    reveal.animator.animate(closed, closedWidth, Motion::immediate, {});
    reveal.to(row.target, row.width, "end;", row.motion);
    const bool begun = reveal.animator.isAnimating() == row.animated
                    && reveal.ended == (row.animated ? "" : "end;")
                    && reveal.time.timers() == (row.animated ? 1U : 0U);
    reveal.time.advance(Seconds{1});
    return begun && reveal.ended == "end;"
        && reveal.panel.applied.back() == std::pair(row.target, row.boundedWidth)
        && reveal.animator.surfaceWidth() == row.boundedWidth;
}

} // namespace

void checkReveal(Suite& suite)
{
    checkOpening(suite);
    checkReversal(suite);
    checkStop(suite);
    for (const auto& row : jumps)
        suite.check(row.text, goesAsSaid(row));
}

} // namespace notch
