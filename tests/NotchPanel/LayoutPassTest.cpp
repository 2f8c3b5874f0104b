// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchPanel/LayoutPass.h"

#include "FakeSurface.h"
#include "NotchPanel/HitRefresh.h"
#include "support/FakeOutside.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace notch {
namespace {

class Layout : public testing::Test {
protected:
    Layout() { model.start(); }

    // What the delegate does: a pass, and every further one that was asked for.
    void settle()
    {
        for (passesLeft = 1; passesLeft > 0 && passes < 100; ++passes) {
            --passesLeft;
            layout.run();
        }
    }
    void settleOver(Seconds time)
    {
        settle();
        outside.time.advance(time);
        settle();
    }

    FakeOutside outside;
    AppModel model{outside.seams()};
    FakeSurface panel;
    VerticalRevealAnimator animator{panel, outside.time, outside.time};
    HitRefresh hit{model, panel, animator};
    std::vector<ScreenRecord> screens{{.frame = {0, 0, 1280, 800}}};
    bool reduced = false;
    int passes = 0;
    int passesLeft = 0;
    LayoutPass layout{{
        .model = model,
        .panel = panel,
        .animator = animator,
        .screens = [this] { return screens; },
        .reduceMotion = [this] { return reduced; },
        .scheduleAnother = [this] { passesLeft = 1; },
        .refreshHit = [this] { hit.run(); },
    }};
};

TEST_F(Layout, withoutScreenNothingHappens)
{
    screens.clear();
    settle();
    EXPECT_EQ(panel.text(), "never");
    EXPECT_EQ(model.state().notchHeight, 32);
}

TEST_F(Layout, staleWidthsEndThePassBeforeAnyFrame)
{
    layout.run();
    EXPECT_EQ(panel.text(), "never");
    EXPECT_EQ(passesLeft, 1);
    EXPECT_EQ(model.state().compactWidth, 236);
    EXPECT_EQ(model.state().notchHeight, 8);
    layout.run();
    EXPECT_EQ(animator.isAnimating(), true);
    outside.time.advance(Seconds{1});
    EXPECT_EQ(panel.text(), "400,0 480x32/236");
}

TEST_F(Layout, contentExpandsBeforeTheFrameAndShrinksAfterIt)
{
    settleOver(Seconds{1});
    model.expand();
    layout.run();
    EXPECT_EQ(model.state().expansionPresentation, true);
    EXPECT_EQ(panel.text(), "400,0 480x32/236");
    settleOver(Seconds{1});
    EXPECT_EQ(panel.text(), "400,0 480x300/480");

    model.collapse();
    settleOver(Seconds{0.2});
    EXPECT_TRUE(model.state().isExpanded());
    settleOver(Seconds{0.1});
    EXPECT_FALSE(model.state().isExpanded());
    EXPECT_EQ(panel.text(), "400,0 480x32/236");
}

TEST_F(Layout, launchValueOfThePresentationDoesNotKeepTheNotchShut)
{
    model.setExpansionPresentation(false);
    model.expand();
    settleOver(Seconds{1});
    EXPECT_EQ(panel.text(), "400,0 480x300/480");
    EXPECT_TRUE(model.state().isExpanded());
}

TEST_F(Layout, reopeningWhileItClosesKeepsTheExpandedForm)
{
    model.expand();
    settleOver(Seconds{1});
    model.collapse();
    settleOver(Seconds{0.1});
    model.expand();
    settleOver(Seconds{1});
    EXPECT_EQ(model.state().expansionPresentation, true);
    EXPECT_EQ(panel.text(), "400,0 480x300/480");
}

TEST_F(Layout, reducedMotionOrAHiddenPanelJumps)
{
    for (const bool onScreen : {true, false}) {
        panel.onScreen = onScreen;
        reduced = onScreen;
        model.expand();
        settle();
        EXPECT_EQ(panel.text(), "400,0 480x300/480");
        model.collapse();
        settle();
        EXPECT_EQ(panel.text(), "400,0 480x32/236");
        EXPECT_FALSE(model.state().isExpanded()); // The completion ran.
    }
}

TEST_F(Layout, heightThatIsNoneLeavesTheFrame)
{
    settleOver(Seconds{1});
    model.expand();
    constexpr double infinite = std::numeric_limits<double>::infinity();
    for (const double height : {0.0, -1.0, infinite, std::nan("")}) {
        panel.contentHeight = height;
        settleOver(Seconds{1});
        EXPECT_EQ(panel.text(), "400,0 480x32/236") << height;
    }
}

TEST_F(Layout, displaysThatChangeMoveThePanelAtOnce)
{
    settleOver(Seconds{1});
    screens.push_back({.frame = {1280, 100, 400, 600}, .topInset = 30});
    settle();
    EXPECT_EQ(panel.text(), "1296,100 368x54/236");
    EXPECT_EQ(model.state().notchHeight, 30);
    EXPECT_EQ(model.state().panelWidth, 368);
    screens.pop_back();
    settle();
    EXPECT_EQ(panel.text(), "400,0 480x32/236");
}

TEST_F(Layout, collapsedNotchGivesTheKeyboardBack)
{
    model.expand();
    panel.key = true;
    settle();
    EXPECT_TRUE(panel.key);
    model.collapse();
    settle();
    EXPECT_FALSE(panel.key);
}

TEST_F(Layout, pointerCountsOnTheSurfaceOnly)
{
    settleOver(Seconds{1});
    struct Row {
        const char* name;
        std::optional<Point> pointer;
        bool onScreen;
        bool inside;
    };
    const Row rows[] = {
        {"on the surface", Point{640, 10}, true, true},
        {"beside it, within the frame", Point{450, 10}, true, false},
        {"back on it", Point{640, 10}, true, true},
        {"the panel is hidden", Point{640, 10}, false, false},
        {"shown again", Point{640, 10}, true, true},
        {"on another desktop", {}, true, false},
    };
    for (const auto& [name, pointer, onScreen, inside] : rows) {
        panel.pointer = pointer;
        panel.onScreen = onScreen;
        hit.run();
        EXPECT_EQ(model.state().interaction.pointerInside(), inside) << name;
    }
}

TEST_F(Layout, surfaceThatShrinksAwayFromTheRestingPointerLosesIt)
{
    animator.frameDidChange = [this] { hit.run(); };
    model.expand();
    settleOver(Seconds{1});
    panel.pointer = Point{640, 200};
    hit.run();
    EXPECT_TRUE(model.state().interaction.pointerInside());
    model.collapse();
    settleOver(Seconds{1});
    EXPECT_FALSE(model.state().interaction.pointerInside());
}

} // namespace
} // namespace notch
