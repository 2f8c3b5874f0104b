// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "ShownScene.h"
#include "Style/SymbolPath.h"
#include "Style/TextBlock.h"

#include <gtest/gtest.h>

#include <QListWidget>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

#include <optional>
#include <string>

namespace notch {
namespace {

class NotchViewTest : public testing::Test, protected ShownScene {
protected:
    // How long until the seconds are shown anew; nothing while they are not counted.
    std::optional<int> nextTick() const
    {
        const auto* const timer = view.findChild<QTimer*>();
        return timer->isActive() ? std::optional(timer->interval()) : std::nullopt;
    }
};

TEST(Symbols, areDrawnInTheirSquares)
{
    for (const auto& [symbol, name] : symbolNames) {
        const auto bounds = symbolPath(symbol).boundingRect();
        EXPECT_GT(bounds.width() * bounds.height(), 40) << name;
        EXPECT_TRUE(QRectF(0, 0, symbolGrid, symbolGrid).contains(bounds)) << name;
    }
}

TEST_F(NotchViewTest, buttonsCallTheModel)
{
    model.showSettings = [this] { fakes.calls.emplace_back("settings"); };
    operations_["click"] = [this] { button(next().c_str()).click(); };
    operations_["choose"] = [this] {
        find<QListWidget>("switcher-list").setCurrentRow(next<int>());
    };
    operations_["layOut"] = [this] { layOut(); };
    const std::string_view trace = R"(click compact | open
click header-settings | open -> settings
click idle-main | open -> open quillmoss
editions 0, click idle-main | open -> settings
on nativeApprovalsEnabled, layOut | open -> monitor.start approvals questions
click idle-main | open -> monitor.requestAccess, open settings, monitor.start approvals questions
click idle-demo | open [demo] trying
click header-settings | open receipt returned demo
wait 5, click header-close | closed
ask A, edit B, ask C, click switcher-next | open A [B] C
click switcher-previous | open [A] B C
choose 1 | open A [B] C
click details-toggle | open A [B] C details
click details-toggle, click details-copy, pasted | {"file":"a"}  open A [B] C copied B
click to-host | open A [B] C copied B -> open quillmoss
wait 0.5, click decision-deny | open [A] C receipt denied copied B -> server.decide B deny
click receipt-next | open [A] C copied B
click compact | closed [A] C copied B
)";
    EXPECT_EQ(played(trace), trace);
}

TEST_F(NotchViewTest, ticksOnlyWhileSomebodyCanSeeTheSeconds)
{
    EXPECT_FALSE(nextTick());
    play("open");
    EXPECT_FALSE(nextTick()) << "nothing waits";
    play("ask A");
    EXPECT_EQ(nextTick(), 1005);
    fakes.time.advance(Seconds{1});
    EXPECT_TRUE(QTest::qWaitFor([this] { return text("time-left") == "49 秒"; }));
    EXPECT_EQ(nextTick(), 1005);
    play("close");
    EXPECT_FALSE(nextTick());
    play("wait 38.5, open");
    EXPECT_EQ(nextTick(), 505);
    view.hide();
    EXPECT_FALSE(nextTick());
    view.show();
    EXPECT_TRUE(nextTick());
    play("gone A");
    EXPECT_FALSE(nextTick()) << "receipt";
    play("wait 5, card B");
    EXPECT_FALSE(nextTick()) << "no deadline";
}

TEST_F(NotchViewTest, redrawingKeepsFocusSelectionAndScrollAndAnythingElseBeginsAnew)
{
    struct Row {
        const char* words;
        bool keeps;
    };
    for (const auto& [words, keeps] : {
             Row{"long C, wait 0.5", true},
             Row{"switch 1, switch 1", false},
             Row{"details, command", false},
             Row{"close, open", false},
             Row{"gone A, wait 5, long B", false},
         }) {
        ShownScene scene;
        scene.play("long A, long D");
        auto& command = scene.find<TextBlock>("approval-command");
        auto& bar = *command.findChild<QScrollBar*>();
        command.setFocus();
        QTest::keySequence(&command, QKeySequence::SelectAll);
        QTest::keyClick(&command, Qt::Key_PageDown);
        EXPECT_GT(bar.value(), 0);
        scene.play(words);
        EXPECT_EQ(bar.value() > 0, keeps) << words;
        EXPECT_EQ(command.selectedText().isEmpty(), !keeps) << words;
        EXPECT_TRUE(!keeps || scene.view.focusWidget() == &command) << words;
    }
}

} // namespace
} // namespace notch
