// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchPanel/LayoutPass.h"

#include "AppModel/AppModelTest.h"
#include "NotchPanel/HitRefresh.h"
#include "SelfCheck/FakeSurface.h"

namespace notch {
namespace {

// Passes over a panel on a screen of 1280 by 800, in traces that end with its frame and surface,
// the form of the content, and whether pointer and keyboard are in it. Every further pass that one
// asks for is run once time passes.
class Layout : public AppModelTest {
protected:
    Layout()
    {
        operations_.insert({
            {"pass", [this] { layout_.run(); }},
            {"noScreen", [this] { screens_.clear(); }},
            {"secondScreen",
                [this] {
                    screens_.push_back({.frame = {1280, 100, 400, 600}, .topInset = 30});
                }},
            {"firstScreen", [this] { screens_.resize(1); }},
            {"reduced", [this] { reduced_ = true; }},
            {"orderOut", [this] { panel_.onScreen = false; }},
            {"content", [this] { panel_.contentHeight = std::stod(next()); }},
            {"point",
                [this] {
                    panel_.pointer = Point{next<double>(), next<double>()};
                }},
            {"otherDesktop", [this] { panel_.pointer.reset(); }},
            {"hit", [this] { hit_.run(); }},
            {"focus", [this] { panel_.key = true; }},
            {"metrics",
                [this] {
                    answer(std::to_string(state().notchHeight) + ' '
                           + std::to_string(state().panelWidth));
                }},
        });
    }

private:
    std::string stateText() override
    {
        return panel_.text() + (state().isExpanded() ? " expanded" : "")
             + (animator_.isAnimating() ? " moving" : "")
             + (interaction().pointerInside() ? " inside" : "") + (panel_.key ? " key" : "");
    }

    FakeSurface panel_;
    VerticalRevealAnimator animator_{panel_, fakes.time, fakes.time};
    HitRefresh hit_{model, panel_, animator_};
    std::vector<ScreenRecord> screens_{{.frame = {0, 0, 1280, 800}}};
    bool reduced_ = false;
    int passes_ = 0;
    LayoutPass layout_{{
        .model = model,
        .panel = panel_,
        .animator = animator_,
        .screens = [this] { return screens_; },
        .reduceMotion = [this] { return reduced_; },
        .scheduleAnother =
            [this] {
                if (++passes_ < 100) // Else they never end.
                    fakes.time.post([this] { layout_.run(); });
            },
        .refreshHit = [this] { hit_.run(); },
    }};
};

TEST_F(Layout, changesWidthsAndFormBeforeAnyFrameAndTheFormBackAfterTheLast)
{
    expectTrace(R"(pass                                | never
wait 1                              | 400,0 480x32/236 narrow
open, pass                          | 400,0 480x32/236 narrow expanded
wait 0                              | 400,0 480x32/236 expanded moving
wait 1                              | 400,0 480x300/480 expanded
close, pass, wait 0.2               | 400,0 480x51.8519/254.074 expanded moving
open, pass, wait 1                  | 400,0 480x300/480 expanded
close, pass, wait 0.2               | 400,0 480x51.8519/254.074 expanded moving
wait 0.1                            | 400,0 480x32/236 narrow
secondScreen, pass, wait 0, metrics | 30.000000 368.000000  1296,100 368x54/236 narrow
firstScreen, pass, wait 0           | 400,0 480x32/236 narrow
noScreen, open, pass, wait 1        | 400,0 480x32/236 narrow expanded
)");
}

TEST_F(Layout, jumpsWithReducedMotionOrHiddenAndNeverToAHeightThatIsNone)
{
    expectTrace(R"(orderOut, pass, wait 0             | 400,0 480x32/236 narrow
open, pass, wait 0                 | 400,0 480x300/480 expanded
close, pass, wait 0                | 400,0 480x32/236 narrow
content 0, open, pass, wait 0      | 400,0 480x32/236 narrow expanded
content -1, pass, wait 0           | 400,0 480x32/236 narrow expanded
content inf, pass, wait 0          | 400,0 480x32/236 narrow expanded
content nan, pass, wait 0          | 400,0 480x32/236 narrow expanded
)");
}

TEST_F(Layout, tellsThePointerOnTheSurfaceOnlyAndGivesTheKeyboardBackWhenClosed)
{
    expectTrace(R"(reduced, open, focus, pass, wait 0   | 400,0 480x300/480 expanded key
point 640 200, hit                   | 400,0 480x300/480 expanded inside key
close, pass, wait 0                  | 400,0 480x32/236 narrow
point 640 10, hit                    | 400,0 480x32/236 narrow inside
point 450 10, hit                    | 400,0 480x32/236 narrow
point 640 10, hit, otherDesktop, hit | 400,0 480x32/236 narrow
point 640 10, hit, orderOut, hit     | 400,0 480x32/236 narrow
)");
}

} // namespace
} // namespace notch
