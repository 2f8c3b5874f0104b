// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "WidgetTest.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPointingDevice>
#include <QTest>

#include <functional>
#include <memory>

namespace notch {
namespace {

using Calls = std::vector<std::string>;

// Decision buttons pressed and released by every device that there is.
class DecisionButtonTest : public WidgetTest {
protected:
    struct Device {
        const char* name;
        std::function<void()> press;
        std::function<void()> release;
    };
    struct Meanwhile {
        const char* name;
        std::function<void()> happens;
    };

    QAbstractButton& allow = button("decision-allow");
    QAbstractButton& deny = button("decision-deny");

    void mouse(QEvent::Type type, QPointF place, Qt::MouseButtons held)
    {
        const auto pressed = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, place, allow.mapToGlobal(place), pressed, held, Qt::NoModifier);
        QCoreApplication::sendEvent(&allow, &event);
    }
    void key(QEvent::Type type, int code, bool repeats)
    {
        QKeyEvent event(type, code, Qt::NoModifier, {}, repeats);
        QCoreApplication::sendEvent(&allow, &event);
    }
    QPointF middle() const { return QRectF(allow.rect()).center(); }
    QPoint middleInView() const { return allow.mapTo(&view, middle().toPoint()); }

    std::vector<Device> devices()
    {
        auto* const screen = touchScreen_.get();
        const auto keyDevice = [this](const char* name, int code) {
            return Device{name, [=, this] { key(QEvent::KeyPress, code, false); },
                [=, this] { key(QEvent::KeyRelease, code, false); }};
        };
        return {
            {"pointer", [this] { mouse(QEvent::MouseButtonPress, middle(), Qt::LeftButton); },
                [this] { mouse(QEvent::MouseButtonRelease, middle(), Qt::NoButton); }},
            {"finger",
                [=, this] { QTest::touchEvent(&view, screen).press(0, middleInView(), &view); },
                [=, this] { QTest::touchEvent(&view, screen).release(0, middleInView(), &view); }},
            keyDevice("space", Qt::Key_Space),
            keyDevice("select", Qt::Key_Select),
            // The action is a press, and a tenth of a second later a release.
            {"screen reader", [this] { pressByScreenReader(allow); },
                [this] { ASSERT_TRUE(runUntil([this] { return !allow.isDown(); })); }},
        };
    }
    static void pressByScreenReader(QAbstractButton& target)
    {
        auto* const accessible = QAccessible::queryAccessibleInterface(&target);
        ASSERT_TRUE(accessible && accessible->actionInterface());
        accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    }
    // A fresh request in the place of whatever waits.
    void startOver()
    {
        while (const auto* waiting = model.state().interaction.current())
            outside.remove(std::string(waiting->id));
        outside.time.advance(Seconds{5});
        arm("A");
    }

private:
    std::unique_ptr<QPointingDevice> touchScreen_{QTest::createTouchDevice()};
};

TEST_F(DecisionButtonTest, everyDeviceDecidesWithinOneArmedTime)
{
    for (const auto& device : devices()) {
        startOver();
        device.press();
        EXPECT_EQ(decisions(), Calls{}) << device.name;
        device.release();
        EXPECT_EQ(decisions(), Calls{"server.decide A allow"}) << device.name;
        device.press();
        device.release();
        EXPECT_EQ(decisions(), Calls{}) << device.name << ", on the receipt";
    }
}

TEST_F(DecisionButtonTest, noReleaseCountsForAnotherTimeOrRequest)
{
    const Meanwhile rows[]{
        {"collapsed", [this] { model.collapse(); }},
        {"armed anew",
            [this] {
                model.collapse();
                model.expand();
                passGuard();
            }},
        {"another one selected",
            [this] {
                outside.request("B");
                model.select("B");
                passGuard();
            }},
        {"selected and back",
            [this] {
                outside.request("B");
                model.select("B");
                model.select("A");
                passGuard();
            }},
        {"gone, and another one in its place",
            [this] {
                outside.request("B");
                outside.remove("A");
                outside.time.advance(Seconds{2});
            }},
        {"expired", [this] { outside.time.advance(Seconds{60}); }},
    };
    for (const auto& device : devices()) {
        for (const auto& meanwhile : rows) {
            startOver();
            device.press();
            meanwhile.happens();
            device.release();
            EXPECT_EQ(decisions(), Calls{}) << device.name << ", " << meanwhile.name;
        }
    }
}

TEST_F(DecisionButtonTest, aPressBeforeTheArmingIsNone)
{
    for (const auto& device : devices()) {
        startOver();
        model.collapse();
        model.expand();
        EXPECT_FALSE(allow.isEnabled());
        device.press();
        passGuard();
        EXPECT_TRUE(allow.isEnabled());
        device.release();
        EXPECT_EQ(decisions(), Calls{}) << device.name;
    }
}

// Disarmed and armed anew while the pointer is down: coming back onto the button is no new press.
TEST_F(DecisionButtonTest, aPointerHeldDownDoesNotPressAgain)
{
    startOver();
    mouse(QEvent::MouseButtonPress, middle(), Qt::LeftButton);
    model.collapse();
    model.expand();
    passGuard();
    mouse(QEvent::MouseMove, {-50, -50}, Qt::LeftButton);
    mouse(QEvent::MouseMove, middle(), Qt::LeftButton);
    mouse(QEvent::MouseButtonRelease, middle(), Qt::NoButton);
    EXPECT_EQ(decisions(), Calls{});
}

TEST_F(DecisionButtonTest, aReleaseOutsideIsNoClick)
{
    startOver();
    mouse(QEvent::MouseButtonPress, middle(), Qt::LeftButton);
    mouse(QEvent::MouseMove, {-50, -50}, Qt::LeftButton);
    mouse(QEvent::MouseButtonRelease, {-50, -50}, Qt::NoButton);
    EXPECT_EQ(decisions(), Calls{});
}

TEST_F(DecisionButtonTest, aKeyThatRepeatsDoesNotPress)
{
    startOver();
    for (int repeat = 0; repeat < 3; ++repeat) {
        key(QEvent::KeyRelease, Qt::Key_Space, true);
        key(QEvent::KeyPress, Qt::Key_Space, true);
    }
    key(QEvent::KeyRelease, Qt::Key_Space, false);
    EXPECT_EQ(decisions(), Calls{});
}

TEST_F(DecisionButtonTest, allowIsNeverReachedByAccident)
{
    startOver();
    EXPECT_EQ(allow.focusPolicy(), Qt::NoFocus);
    for (int step = 0; step < 30; ++step) {
        QTest::keyClick(&view, Qt::Key_Tab);
        QTest::keyClick(
            QApplication::focusWidget() ? QApplication::focusWidget() : &view, Qt::Key_Return);
        EXPECT_FALSE(allow.hasFocus());
    }
    EXPECT_EQ(decisions(), Calls{});
}

TEST_F(DecisionButtonTest, anUnarmedButtonLooksDisabled)
{
    startOver();
    const auto colour = [this] { return allow.grab().toImage().pixelColor(8, allow.height() / 2); };
    const auto armed = colour();
    model.collapse();
    model.expand();
    EXPECT_GT(armed.value() - colour().value(), 100);
}

TEST_F(DecisionButtonTest, denyGoesTheSameWay)
{
    startOver();
    QTest::mouseClick(&deny, Qt::LeftButton);
    EXPECT_EQ(decisions(), Calls{"server.decide A deny"});
    startOver();
    model.collapse();
    model.expand();
    pressByScreenReader(deny);
    deny.click();
    EXPECT_EQ(decisions(), Calls{});
}

// A redraw in the middle of a click is no reason to lose it.
TEST_F(DecisionButtonTest, unfoldingTheDetailsSwallowsNoPress)
{
    startOver();
    const auto* const before = &allow;
    mouse(QEvent::MouseButtonPress, middle(), Qt::LeftButton);
    model.setShowAllParameters(true);
    EXPECT_EQ(&button("decision-allow"), before);
    mouse(QEvent::MouseButtonRelease, middle(), Qt::NoButton);
    EXPECT_EQ(decisions(), Calls{"server.decide A allow"});
}

} // namespace
} // namespace notch
