// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchPanel/NotchPanel.h"

#include "PanelOnDesktop.h"

#include <QToolTip>

#include <gtest/gtest.h>

namespace notch {
namespace {

using Area = OtherProgram::Area;
constexpr OtherProgram::Colour white{255, 255, 255};
constexpr OtherProgram::Colour black{0, 0, 0};

constexpr Rect open{400, 0, 480, 300};
constexpr Rect closed{400, 0, 480, 32};

std::vector<Area> areas(const NotchShape& shape, double offset, double scale)
{
    std::vector<Area> all;
    for (const auto& p : pixelsInside(shape, offset, scale))
        all.push_back({p.x, p.y, p.width, p.height});
    return all;
}

TEST_F(PanelOnDesktop, clicksBesideTheSurfaceReachTheWindowBelow)
{
    struct Row {
        const char* name;
        Rect frame;
        double surfaceWidth;
        int x;
        int y;
        bool onSurface;
    };
    const Row rows[] = {
        {"middle of the open notch", open, 480, 640, 150, true},
        {"under the left shoulder", open, 480, 405, 8, false},
        {"under the right shoulder", open, 480, 874, 8, false},
        {"beyond the lower left corner", open, 480, 414, 297, false},
        {"within the lower left corner", open, 480, 420, 292, true},
        {"below it", open, 480, 640, 301, false},
        {"middle of the closed notch", closed, 236, 640, 10, true},
        {"beside the closed notch", closed, 236, 450, 5, false},
        {"where it was open", closed, 236, 640, 150, false},
    };
    launch();
    const auto below = other->openFullScreenWindow();
    ASSERT_TRUE(activates(below));
    panel->orderFront();
    for (const auto& [name, frame, surfaceWidth, x, y, onSurface] : rows) {
        panel->applyFrame(frame, surfaceWidth);
        synchronise();
        content->presses = 0;
        other->clickAt(x, y);
        int missed = 0;
        eventually([&] { return (missed += other->takePresses(below)) + content->presses > 0; });
        EXPECT_EQ(content->presses, onSurface ? 1 : 0) << name;
        EXPECT_EQ(missed, onSurface ? 0 : 1) << name;
    }
}

TEST_F(PanelOnDesktop, standsAboveAFocusedFullScreenWindowOpenedLater)
{
    launch();
    panel->applyFrame(open, 480);
    panel->orderFront();
    synchronise();
    const auto window = other->openFullScreenWindow();
    ASSERT_TRUE(activates(window));
    ASSERT_TRUE(eventually([&] { return other->colourAt(100, 700) == white; }));
    EXPECT_TRUE(eventually([&] { return other->colourAt(640, 150) == black; }));
    other->clickAt(640, 150);
    EXPECT_TRUE(eventually([&] { return content->presses == 1; }));
}

TEST_F(PanelOnDesktop, keyboardStaysWhereItIsUntilAPressAndGoesBackAfterwards)
{
    launch();
    const auto window = other->openWindow({100, 400, 300, 200});
    ASSERT_TRUE(activates(window));
    for (const bool hides : {false, true}) {
        panel->applyFrame(open, 480);
        panel->orderFront();
        synchronise();
        EXPECT_EQ(other->focus(), window);
        EXPECT_FALSE(panel->isKeyWindow());

        other->clickAt(640, 150);
        EXPECT_TRUE(eventually([&] { return panel->isKeyWindow(); }));
        EXPECT_EQ(other->focus(), panel->winId());

        if (hides)
            panel->orderOut();
        else
            panel->resignKeyWindow();
        EXPECT_TRUE(eventually([&] { return !panel->isKeyWindow(); }));
        EXPECT_EQ(other->focus(), window);
    }
}

TEST_F(PanelOnDesktop, keyboardThatSomebodyElseTookIsNotTakenBack)
{
    launch();
    const auto first = other->openWindow({100, 400, 300, 200});
    ASSERT_TRUE(activates(first));
    panel->applyFrame(open, 480);
    panel->orderFront();
    synchronise();
    other->clickAt(640, 150);
    ASSERT_TRUE(eventually([&] { return panel->isKeyWindow(); }));
    const auto second = other->openWindow({500, 400, 300, 200});
    ASSERT_TRUE(activates(second));
    panel->resignKeyWindow();
    EXPECT_TRUE(eventually([&] { return !panel->isKeyWindow(); }));
    EXPECT_EQ(other->focus(), second);
}

TEST_F(PanelOnDesktop, toolTipsShowWithoutTheKeyboard)
{
    launch();
    content->setToolTip(QStringLiteral("tip"));
    panel->applyFrame(open, 480);
    panel->orderFront();
    synchronise();
    other->moveTo(640, 150);
    EXPECT_TRUE(eventually([] { return QToolTip::isVisible(); }));
    EXPECT_FALSE(panel->isKeyWindow());
}

TEST_F(PanelOnDesktop, regionsAreExactAtTwiceTheScale)
{
    launch("2");
    constexpr Rect frame{80, 0, 480, 200.5};
    panel->applyFrame(frame, 300);
    panel->orderFront();
    synchronise();
    const auto expected = areas(NotchShape(300, 200.5), 90, 2);
    const auto window = static_cast<xcb_window_t>(panel->winId());
    EXPECT_EQ(other->inputRegion(window), expected);
    EXPECT_EQ(other->visibleRegion(window), expected);
}

TEST_F(PanelOnDesktop, isCutHardOnlyWhileNobodyBlends)
{
    launch();
    panel->applyFrame(open, 480);
    panel->orderFront();
    synchronise();
    const auto window = static_cast<xcb_window_t>(panel->winId());
    const auto outline = areas(NotchShape(480, 300), 0, 1);
    const std::vector<Area> whole{{0, 0, 480, 300}};
    EXPECT_EQ(other->visibleRegion(window), outline);
    other->claim("_NET_WM_CM_S0");
    EXPECT_TRUE(eventually([&] { return other->visibleRegion(window) == whole; }));
    EXPECT_EQ(other->inputRegion(window), outline);
    other->giveUp("_NET_WM_CM_S0");
    EXPECT_TRUE(eventually([&] { return other->visibleRegion(window) == outline; }));
}

TEST_F(PanelOnDesktop, edgesAreSmoothWhereSomebodyBlends)
{
    launch();
    other->openFullScreenWindow();
    panel->applyFrame(open, 480);
    panel->orderFront();
    const auto smoothPixels = [&] {
        int count = 0;
        for (int x = 400; x < 440; ++x) {
            const auto colour = other->colourAt(x, 290);
            count += colour != white && colour != black ? 1 : 0;
        }
        return count;
    };
    const auto isBlackInside = [&] { return other->colourAt(440, 290) == black; };
    ASSERT_TRUE(eventually(isBlackInside));
    EXPECT_EQ(smoothPixels(), 0);
    if (!desktop->startCompositor())
        GTEST_SKIP() << "picom is not installed";
    EXPECT_TRUE(eventually([&] { return smoothPixels() > 0 && isBlackInside(); }));
    EXPECT_EQ(other->colourAt(400, 290), white);
    desktop->stopLast();
    EXPECT_TRUE(eventually([&] { return smoothPixels() == 0 && isBlackInside(); }));
}

TEST_F(PanelOnDesktop, pointerPositionIsTheMiddleOfItsPixel)
{
    launch("2");
    panel->applyFrame({80, 0, 480, 300}, 480);
    panel->orderFront();
    synchronise();
    other->moveTo(401, 33);
    const auto position = panel->pointerPosition();
    ASSERT_TRUE(position);
    EXPECT_EQ(*position, (Point{200.75, 16.75}));
}

} // namespace
} // namespace notch
