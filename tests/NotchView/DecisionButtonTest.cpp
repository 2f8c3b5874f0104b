// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "ShownScene.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QPointingDevice>
#include <QSignalSpy>
#include <QTest>

#include <functional>
#include <memory>

namespace notch {
namespace {

using Edge = QTest::KeyAction; // Press or Release.

struct Device {
    const char* name;
    std::function<void(QAbstractButton&, Edge)> act;
};

void touch(QAbstractButton& button, Edge edge, QPointingDevice* screen)
{
    auto finger = QTest::touchEvent(button.window(), screen);
    const auto place = button.mapTo(button.window(), button.rect().center());
    edge == QTest::Press ? finger.press(0, place) : finger.release(0, place);
}

// One action is a press, and a tenth of a second later a release; nothing on a disabled button.
void pressByScreenReader(QAbstractButton& button, Edge edge)
{
    if (edge == QTest::Press)
        QAccessible::queryAccessibleInterface(&button)->actionInterface()->doAction(
            QAccessibleActionInterface::pressAction());
    else
        QSignalSpy(&button, &QAbstractButton::clicked).wait(200);
}

struct Row {
    const char* before; // In the words of a scene.
    const char* between;
    const char* decisions; // Then, and after another press and release a little later.
};

std::string decisionsOf(const Device& device, const char* name, const Row& row)
{
    ShownScene scene;
    scene.play(std::string("ask A, wait 0.5, ") + row.before);
    const auto act = [&](Edge edge) { // The buttons go with the last request.
        if (auto* const button = scene.view.findChild<QAbstractButton*>(QLatin1String(name)))
            device.act(*button, edge);
    };
    act(QTest::Press);
    scene.play(row.between);
    act(QTest::Release);
    const auto first = scene.fakes.takeCalls("server.decide").size();
    scene.play("wait 0.5");
    act(QTest::Press);
    act(QTest::Release);
    const auto second = scene.fakes.takeCalls("server.decide").size();
    return std::to_string(first) + ' ' + std::to_string(second);
}

TEST(DecisionButton, countsPressAndReleaseInOneArmedTimeOfOneRequest)
{
    const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
    const auto mouse = [](QAbstractButton& it, Edge edge) {
        const auto action = edge == QTest::Press ? QTest::MousePress : QTest::MouseRelease;
        QTest::mouseEvent(action, &it, Qt::LeftButton, {}, {});
    };
    const auto finger = [&](QAbstractButton& it, Edge edge) { touch(it, edge, screen.get()); };
    const auto key = [](Qt::Key code) {
        return [code](QAbstractButton& it, Edge edge) { QTest::keyEvent(edge, &it, code); };
    };
    for (const auto& device : {
             Device{"pointer", mouse},
             Device{"finger", finger},
             Device{"space", key(Qt::Key_Space)},
             Device{"select", key(Qt::Key_Select)},
             Device{"screen reader", pressByScreenReader},
         }) {
        for (const auto& row : {
                 Row{"", "", "1 0"},
                 Row{"", "details", "1 0"},
                 Row{"", "close", "0 0"},
                 Row{"", "close, open", "0 1"},
                 Row{"", "close, open, wait 0.5", "0 1"},
                 Row{"", "ask B, switch 1, wait 0.5", "0 1"},
                 Row{"", "ask B, switch 1, switch 1, wait 0.5", "0 1"},
                 Row{"", "ask B, gone A, wait 2", "0 1"},
                 Row{"", "wait 60", "0 0"},
                 Row{"close, open", "wait 0.5", "0 1"},
             }) {
            for (const auto* const name : {"decision-allow", "decision-deny"})
                EXPECT_EQ(decisionsOf(device, name, row), row.decisions)
                    << name << " by " << device.name << ": " << row.before << " | " << row.between;
        }
    }
}

void clickAt(QAbstractButton& button, std::uint32_t time)
{
    const QPointF within(5, 5);
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, within, button.mapToGlobal(within), Qt::LeftButton, {}, {});
        event.setTimestamp(time);
        QCoreApplication::sendEvent(&button, &event);
    }
}

void typeAt(QAbstractButton& button, std::uint32_t time)
{
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, Qt::Key_Space, Qt::NoModifier);
        event.setTimestamp(time);
        QCoreApplication::sendEvent(&button, &event);
    }
}

TEST(GuardedButton, takesAPressForMadeWhenItsEventSaysSo)
{
    for (const auto& [before, name] : {
             std::pair("ask A", "decision-allow"),
             {"question", "question-go-answer"},
             {"on completionRemindersEnabled, turn", "completion-open"},
             {"on completionRemindersEnabled, turn", "completion-dismiss"},
         }) {
        for (const auto act : {clickAt, typeAt}) {
            ShownScene scene;
            const auto changes = [&, named = name](std::uint32_t time) {
                const auto state = scene.state();
                act(scene.button(named), time);
                return scene.state() != state;
            };
            scene.play(std::string(before) + ", watched, frame, wait 0.4");
            const auto early = scene.fakes.display.inputTime()->milliseconds;
            scene.play("wait 1");
            EXPECT_FALSE(changes(early)) << name;
            EXPECT_TRUE(changes(scene.fakes.display.inputTime()->milliseconds)) << name;
        }
    }
}

class DecisionButtonTest : public testing::Test, protected ShownScene {
protected:
    auto decisions() { return fakes.takeCalls("server.decide").size(); }

    QAbstractButton& allow = (play("ask A, wait 0.5"), button("decision-allow"));
};

TEST_F(DecisionButtonTest, aPointerPressesOnceAndOnlyOnTheButton)
{
    const QPoint beside(-50, -50);
    QTest::mousePress(&allow, Qt::LeftButton);
    QTest::mouseMove(&allow, beside);
    QTest::mouseRelease(&allow, Qt::LeftButton, {}, beside);
    EXPECT_EQ(decisions(), 0U);
    // Coming back onto the button in a later armed time is no new press.
    QTest::mousePress(&allow, Qt::LeftButton);
    play("close, open, wait 0.5");
    QTest::mouseMove(&allow, beside);
    QTest::mouseMove(&allow, allow.rect().center());
    QTest::mouseRelease(&allow, Qt::LeftButton);
    EXPECT_EQ(decisions(), 0U);
}

TEST_F(DecisionButtonTest, aKeyThatRepeatsNeitherPressesNorReleases)
{
    const auto repeat = [this] {
        for (const auto type : {QEvent::KeyRelease, QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, Qt::Key_Space, Qt::NoModifier, {}, true);
            QCoreApplication::sendEvent(&allow, &event);
        }
    };
    repeat();
    QTest::keyRelease(&allow, Qt::Key_Space);
    EXPECT_EQ(decisions(), 0U);
    QTest::keyPress(&allow, Qt::Key_Space);
    repeat();
    EXPECT_EQ(decisions(), 0U);
    QTest::keyRelease(&allow, Qt::Key_Space);
    EXPECT_EQ(decisions(), 1U);
}

TEST_F(DecisionButtonTest, allowIsNeverReachedByAccident)
{
    EXPECT_EQ(allow.focusPolicy(), Qt::NoFocus);
    for (int step = 0; step < 30; ++step) {
        QTest::keyClick(&view, Qt::Key_Tab);
        auto* const focused = QApplication::focusWidget();
        QTest::keyClick(focused ? focused : &view, Qt::Key_Return);
        EXPECT_FALSE(allow.hasFocus());
    }
    EXPECT_EQ(decisions(), 0U);
}

} // namespace
} // namespace notch
