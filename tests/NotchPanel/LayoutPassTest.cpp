// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchPanel/LayoutPass.h"

#include "FakeSurface.h"
#include "NotchPanel/HitRefresh.h"
#include "support/FakeOutside.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <string>

namespace notch {
namespace {

const std::string compact = "400,0 480x32/236";
const std::string full = "400,0 480x300/480 expanded";

class Layout : public testing::Test {
protected:
    Layout() { model.start(); }

    // Frame, surface and the content's form this long after a pass; every further one that it asks
    // for is run.
    std::string after(double seconds)
    {
        layout.run();
        outside.time.advance(Seconds{seconds});
        return panel.text() + (model.state().isExpanded() ? " expanded" : "");
    }
    bool pointerInside() const { return model.state().interaction.pointerInside(); }

    FakeOutside outside;
    AppModel model{outside.seams()};
    FakeSurface panel;
    VerticalRevealAnimator animator{panel, outside.time, outside.time};
    HitRefresh hit{model, panel, animator};
    std::vector<ScreenRecord> screens{{.frame = {0, 0, 1280, 800}}};
    bool reduced = false;
    int passes = 0;
    LayoutPass layout{{
        .model = model,
        .panel = panel,
        .animator = animator,
        .screens = [this] { return screens; },
        .reduceMotion = [this] { return reduced; },
        .scheduleAnother =
            [this] {
                if (++passes < 100) // Else they never end.
                    outside.time.post([this] { layout.run(); });
            },
        .refreshHit = [this] { hit.run(); },
    }};
};

TEST_F(Layout, withoutScreenNothingHappens)
{
    screens.clear();
    EXPECT_EQ(after(1), "never");
    EXPECT_EQ(model.state().notchHeight, 32);
}

TEST_F(Layout, staleWidthsEndThePassBeforeAnyFrame)
{
    layout.run();
    EXPECT_EQ(model.state().compactWidth, 236);
    EXPECT_EQ(model.state().notchHeight, 8);
    EXPECT_EQ(panel.text(), "never");
    EXPECT_FALSE(animator.isAnimating());
    outside.time.runPosted();
    EXPECT_TRUE(animator.isAnimating());
    EXPECT_EQ(after(1), compact);
}

TEST_F(Layout, contentExpandsBeforeTheFrameAndShrinksAfterItUnlessReopened)
{
    model.setExpansionPresentation(false); // As at launch.
    EXPECT_EQ(after(1), compact);
    model.expand();
    layout.run();
    EXPECT_EQ(model.state().expansionPresentation, true);
    EXPECT_FALSE(animator.isAnimating());
    EXPECT_EQ(after(1), full);
    model.collapse();
    EXPECT_THAT(after(0.2), testing::EndsWith(" expanded"));
    model.expand();
    EXPECT_EQ(after(1), full);
    EXPECT_EQ(model.state().expansionPresentation, true);
    model.collapse();
    EXPECT_THAT(after(0.2), testing::EndsWith(" expanded"));
    EXPECT_EQ(after(0.1), compact);
}

TEST_F(Layout, reducedMotionOrAHiddenPanelJumpsAndTheCompletionRuns)
{
    for (const bool onScreen : {true, false}) {
        panel.onScreen = onScreen;
        reduced = onScreen;
        model.expand();
        EXPECT_EQ(after(0), full);
        model.collapse();
        EXPECT_EQ(after(0), compact);
    }
}

TEST_F(Layout, heightThatIsNoneLeavesTheFrame)
{
    EXPECT_EQ(after(1), compact);
    model.expand();
    constexpr double infinite = std::numeric_limits<double>::infinity();
    for (const double height : {0.0, -1.0, infinite, std::nan("")}) {
        panel.contentHeight = height;
        EXPECT_EQ(after(1), compact + " expanded") << height;
    }
}

TEST_F(Layout, displaysThatChangeMoveThePanelAtOnce)
{
    EXPECT_EQ(after(1), compact);
    screens.push_back({.frame = {1280, 100, 400, 600}, .topInset = 30});
    EXPECT_EQ(after(0), "1296,100 368x54/236");
    EXPECT_EQ(model.state().notchHeight, 30);
    EXPECT_EQ(model.state().panelWidth, 368);
    screens.pop_back();
    EXPECT_EQ(after(0), compact);
}

TEST_F(Layout, collapsedNotchGivesTheKeyboardBack)
{
    model.expand();
    panel.key = true;
    layout.run();
    EXPECT_TRUE(panel.key);
    model.collapse();
    layout.run();
    EXPECT_FALSE(panel.key);
}

TEST_F(Layout, pointerCountsOnTheSurfaceOnly)
{
    EXPECT_EQ(after(1), compact);
    const struct {
        const char* name;
        std::optional<Point> pointer;
        bool onScreen;
    } outsides[] = {
        {"beside it, within the frame", Point{450, 10}, true},
        {"the panel is hidden", Point{640, 10}, false},
        {"on another desktop", {}, true},
    };
    for (const auto& row : outsides) {
        panel.pointer = Point{640, 10};
        panel.onScreen = true;
        hit.run();
        EXPECT_TRUE(pointerInside());
        panel.pointer = row.pointer;
        panel.onScreen = row.onScreen;
        hit.run();
        EXPECT_FALSE(pointerInside()) << row.name;
    }
}

TEST_F(Layout, surfaceThatShrinksAwayFromTheRestingPointerLosesIt)
{
    panel.pointer = Point{640, 200};
    model.expand();
    EXPECT_EQ(after(1), full);
    EXPECT_TRUE(pointerInside());
    model.collapse();
    EXPECT_EQ(after(1), compact);
    EXPECT_FALSE(pointerInside());
}

} // namespace
} // namespace notch
