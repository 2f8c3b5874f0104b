// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchPanel/NotchPanel.h"

#include "PanelOnDesktop.h"

#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QToolTip>

namespace notch {
namespace {

constexpr auto white = OtherProgram::white;
constexpr auto black = OtherProgram::black;

class NotchPanelTest : public PanelOnDesktop {
protected:
    std::vector<PixelRect> region(xcb_shape_kind_t kind)
    {
        return other.region(static_cast<xcb_window_t>(panel->winId()), kind);
    }
    // Pixels at the lower left corner that are neither the window's below nor the surface's.
    int smoothPixels()
    {
        int count = 0;
        for (int x = 400; x < 440; ++x) {
            const auto colour = other.colourAt(x, 290);
            count += colour != white && colour != black ? 1 : 0;
        }
        return count;
    }
    bool isBlackInside() { return other.colourAt(440, 290) == black; }
};

TEST_F(NotchPanelTest, clicksBesideTheSurfaceReachTheFullScreenWindowBelow)
{
    constexpr Rect closed{400, 0, 480, 32};
    const struct {
        const char* name;
        Rect frame;
        double surfaceWidth;
        int x;
        int y;
        bool onSurface;
        NotchPanel::Room room = NotchPanel::Room::frame;
    } rows[] = {
        {"middle of the open notch", open, 480, 640, 150, true},
        {"under the left shoulder", open, 480, 405, 8, false},
        {"beyond the lower left corner", open, 480, 414, 297, false},
        {"left end of the closed notch", closed, 236, 540, 10, true},
        {"beside the closed notch", closed, 236, 450, 5, false},
        {"where it was open", closed, 236, 640, 150, false},
        {"left end, at rest", closed, 236, 540, 10, true, NotchPanel::Room::surface},
        {"right end, at rest", closed, 236, 740, 10, true, NotchPanel::Room::surface},
        {"beside it, at rest", closed, 236, 450, 5, false, NotchPanel::Room::surface},
        {"left end of the opening one", closed, 300, 510, 10, true},
    };
    launch();
    show();
    ASSERT_TRUE(hasFocus(other.openFullScreenWindow()));
    for (const auto& row : rows) {
        panel->applyFrame(row.frame, row.surfaceWidth);
        panel->setRoom(row.room);
        synchronise();
        const auto width = row.room == NotchPanel::Room::surface ? row.surfaceWidth : 480;
        EXPECT_EQ(other.widthOf(static_cast<xcb_window_t>(panel->winId())), width) << row.name;
        EXPECT_EQ(content->mapToGlobal(QPoint()), QPoint(400, 0)) << row.name;
        content->presses = 0;
        other.clickAt(row.x, row.y);
        int missed = 0;
        eventually([&] { return (missed += other.takePresses()) + content->presses > 0; });
        EXPECT_EQ(content->presses, row.onSurface ? 1 : 0) << row.name;
        EXPECT_EQ(missed, row.onSurface ? 0 : 1) << row.name;
    }
}

TEST_F(NotchPanelTest, tellsWhenItsSurfaceIsCoveredAndWhenItIsInSightAgain)
{
    constexpr Rect closed{400, 0, 480, 32};
    const struct {
        const char* name;
        Rect frame;
        double surfaceWidth;
        PixelRect above;
        std::string told;
    } rows[] = {
        {"the whole screen", open, 480, {0, 0, 1280, 800}, "hidden uncovered "},
        {"all but a bar's height", open, 480, {0, 24, 1280, 776}, "hidden uncovered "},
        {"the buttons", open, 480, {400, 200, 480, 100}, "uncovered "},
        {"beside the closed notch only", closed, 236, {400, 0, 100, 32}, ""},
        {"below the notch", open, 480, {400, 300, 480, 300}, ""},
    };
    launch();
    std::string told;
    panel->surfaceHidden = [&] { told += "hidden "; };
    panel->surfaceUncovered = [&] { told += "uncovered "; };
    for (const auto& row : rows) {
        show(row.frame, row.surfaceWidth);
        const auto above = other.openAbove(row.above);
        told.clear();
        panel->watchCover(true); // Finds what is there already.
        other.close(above);
        synchronise();
        EXPECT_TRUE(eventually([&] { return told == row.told; })) << row.name << ": " << told;
        panel->watchCover(false);
    }
    show();
    panel->watchCover(true);
    told.clear();
    other.openAbove({0, 0, 1280, 800});
    EXPECT_TRUE(eventually([&] { return told == "hidden "; })) << told;
    panel->bringToFront();
    EXPECT_TRUE(eventually([&] { return told == "hidden uncovered "; })) << told;
    panel->watchCover(false);
    other.openAbove({0, 0, 1280, 800});
    synchronise();
    EXPECT_EQ(told, "hidden uncovered ") << "nobody watches";
}

TEST_F(NotchPanelTest, keyboardStaysWhereItIsUntilAPressAndGoesBackAfterwards)
{
    launch();
    const auto window = other.openWindow();
    ASSERT_TRUE(hasFocus(window));
    for (const auto leave : {&NotchPanel::resignKeyWindow, &NotchPanel::orderOut}) {
        show();
        EXPECT_EQ(other.focus(), window);
        EXPECT_FALSE(panel->isKeyWindow());
        other.clickAt(640, 150);
        EXPECT_TRUE(eventually([&] { return panel->isKeyWindow(); }));
        EXPECT_EQ(other.focus(), panel->winId());
        (*panel.*leave)();
        EXPECT_TRUE(eventually([&] { return !panel->isKeyWindow(); }));
        EXPECT_EQ(other.focus(), window);
    }
    show();
    other.clickAt(640, 150);
    ASSERT_TRUE(hasFocus(static_cast<xcb_window_t>(panel->winId())));
    const auto second = other.openWindow();
    ASSERT_TRUE(hasFocus(second));
    panel->resignKeyWindow();
    EXPECT_TRUE(eventually([&] { return !panel->isKeyWindow(); }));
    EXPECT_EQ(other.focus(), second) << "another window took it";
}

TEST_F(NotchPanelTest, takesNoKeyboardUnderXWaylandAndLooksLikeNoWindowThatNeedsIt)
{
    ASSERT_EQ(std::system("xrandr --setmonitor XWAYLAND0 1280/300x800/200+0+0 screen"), 0);
    launch();
    const auto window = other.openWindow();
    ASSERT_TRUE(hasFocus(window));
    show();
    other.clickAt(640, 150);
    EXPECT_TRUE(isPressed());
    EXPECT_EQ(other.focus(), window);
    const auto properties = "xprop -id " + std::to_string(panel->winId()) + " _NET_WM_WINDOW_TYPE";
    EXPECT_EQ(std::system((properties + " | grep NOTIFICATION").c_str()), 0);
    EXPECT_EQ(std::system("xrandr --delmonitor XWAYLAND0"), 0);
}

TEST_F(NotchPanelTest, aClickOnAControlLeavesTheKeyboardWhereItWasUnlessItIsInUse)
{
    launch();
    auto* const control = new QPushButton(content);
    control->setGeometry(40, 40, 100, 40);
    control->setFocusPolicy(Qt::TabFocus);
    auto* const text = new QLineEdit(content);
    text->setGeometry(40, 100, 100, 40);
    show();
    int clicks = 0;
    QObject::connect(control, &QPushButton::clicked, [&] { ++clicks; });
    const auto clickControl = [&] {
        other.clickAt(450, 60);
        return eventually([&] { return std::exchange(clicks, 0) == 1; });
    };
    const auto clickText = [&] {
        other.clickAt(450, 120);
        return eventually([&] { return text->hasFocus(); });
    };
    const auto clickGround = [&] {
        other.clickAt(640, 250);
        return hasFocus(static_cast<xcb_window_t>(panel->winId()))
            && eventually([&] { return panel->hasFocus(); });
    };
    const auto typeTab = [&] {
        other.type(OtherProgram::Key::tab);
        return eventually([&] { return control->hasFocus(); });
    };
    const struct {
        const char* name;
        std::vector<std::function<bool()>> steps;
        bool keeps;
    } rows[] = {
        {"a control", {clickControl}, false},
        {"the ground, then a control", {clickGround, clickControl}, false},
        {"a text, then a control", {clickText, clickControl}, true},
        {"a key, then a control", {clickGround, typeTab, clickControl}, true},
        {"a control, long after the keys", {clickControl}, false},
    };
    for (const auto& row : rows) {
        const auto work = other.openWindow();
        ASSERT_TRUE(hasFocus(work));
        for (const auto& step : row.steps)
            ASSERT_TRUE(step()) << row.name;
        const auto owner = row.keeps ? static_cast<xcb_window_t>(panel->winId()) : work;
        EXPECT_TRUE(hasFocus(owner)) << row.name;
        EXPECT_FALSE(control->hasFocus()) << row.name << ": a ring after a click";
    }
}

TEST_F(NotchPanelTest, toolTipsShowWithoutTheKeyboard)
{
    launch();
    content->setToolTip(QStringLiteral("tip"));
    show();
    other.moveTo(640, 150);
    EXPECT_TRUE(eventually([] { return QToolTip::isVisible(); }));
    EXPECT_FALSE(panel->isKeyWindow());
}

TEST_F(NotchPanelTest, regionsAndPointerAreExactAtTwiceTheScale)
{
    launch(2);
    show({80, 0, 480, 200.5}, 300);
    const auto expected = pixelsInside(NotchShape(300, 200.5), 90, 2);
    EXPECT_EQ(region(XCB_SHAPE_SK_INPUT), expected);
    EXPECT_EQ(region(XCB_SHAPE_SK_BOUNDING), expected);
    other.moveTo(401, 33);
    EXPECT_EQ(panel->pointerPosition(), (Point{200.75, 16.75})) << "the middle of its pixel";
    other.openAbove({400, 30, 10, 10});
    EXPECT_EQ(panel->pointerPosition(), std::nullopt) << "it is on another program's window";
}

TEST_F(NotchPanelTest, isCutHardWhileNobodyBlendsAndSmoothOtherwise)
{
    launch();
    ASSERT_TRUE(hasFocus(other.openFullScreenWindow()));
    show();
    const auto outline = pixelsInside(NotchShape(480, 300), 0, 1);
    const auto isHard = [&] {
        return region(XCB_SHAPE_SK_BOUNDING) == outline && smoothPixels() == 0 && isBlackInside();
    };
    EXPECT_TRUE(eventually(isHard));
    QProcess compositor;
    compositor.start(QStringLiteral("picom"),
        {QStringLiteral("--config=/dev/null"), QStringLiteral("--backend=xrender"),
            QStringLiteral("--shadow")});
    if (!compositor.waitForStarted())
        GTEST_SKIP() << "picom is not installed";
    EXPECT_TRUE(eventually([&] { return smoothPixels() > 0 && isBlackInside(); }));
    EXPECT_EQ(region(XCB_SHAPE_SK_BOUNDING), (std::vector<PixelRect>{{0, 0, 480, 300}}));
    EXPECT_EQ(region(XCB_SHAPE_SK_INPUT), outline);
    EXPECT_EQ(other.colourAt(400, 290), white) << "outside the surface: no shadow either";
    EXPECT_EQ(other.colourAt(640, 305), white) << "below the surface";
    compositor.kill();
    EXPECT_TRUE(eventually(isHard));
}

} // namespace
} // namespace notch
