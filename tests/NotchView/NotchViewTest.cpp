// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "WidgetTest.h"

#include "Foundation/Json.h"
#include "NotchView/SymbolPath.h"
#include "NotchView/VisibleText.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

namespace notch {
namespace {

using testing::IsSupersetOf;

class NotchViewTest : public WidgetTest {
protected:
    // The names by which a screen reader reaches the buttons that are on show.
    std::vector<std::string> namedButtons() const
    {
        std::vector<std::string> names;
        for (auto* const widget : view.findChildren<QAbstractButton*>()) {
            auto* const accessible = QAccessible::queryAccessibleInterface(widget);
            if (!widget->isVisible() || !accessible)
                continue;
            EXPECT_EQ(accessible->role(), QAccessible::Button);
            EXPECT_TRUE(accessible->actionInterface()->actionNames().contains(
                QAccessibleActionInterface::pressAction()));
            names.push_back(accessible->text(QAccessible::Name).toStdString());
        }
        return names;
    }
    bool ticks() const { return view.findChild<QTimer*>()->isActive(); }
    ApprovalRequest hostile(const std::string& text) const
    {
        auto made = outside.hookRequest("A");
        made.toolName = made.sessionID = made.cwd = text;
        made.toolInputJSON = Json(Json::Object{{"command", text}, {"description", text}}).compact();
        return made;
    }
    void arrive(const ApprovalRequest& request)
    {
        outside.server.callbacks.onRequest(request);
        outside.time.runPosted();
    }
    void expectNothingLeavesThePanel() const
    {
        for (const auto* const widget : view.findChildren<QWidget*>()) {
            if (!widget->isVisible() || !widget->parentWidget()->parentWidget())
                continue;
            EXPECT_TRUE(widget->parentWidget()->rect().contains(widget->geometry()))
                << widget->objectName().toStdString() << ' ' << widget->metaObject()->className();
        }
    }
};

TEST_F(NotchViewTest, everySymbolIsDrawn)
{
    for (const auto& [symbol, name] : symbolNames) {
        const auto bounds = symbolPath(symbol).boundingRect();
        EXPECT_GT(bounds.width() * bounds.height(), 40) << name;
        EXPECT_TRUE(QRectF(0, 0, symbolGrid, symbolGrid).contains(bounds)) << name;
    }
}

TEST_F(NotchViewTest, namesItsButtonsInEveryState)
{
    const auto named = [this] { return namedButtons(); };
    const std::vector<std::string> header{"接入与交互设置", "暂时收起，不改变审批决定"};
    EXPECT_EQ(named(), std::vector<std::string>{"展开 QuillMoss 刘海"});
    model.expand();
    EXPECT_THAT(named(), IsSupersetOf(header));
    EXPECT_THAT(named(), IsSupersetOf({"打开 QuillMoss ↗", "体验一下 →"}));
    arm("A");
    EXPECT_THAT(named(), IsSupersetOf(header));
    EXPECT_THAT(named(), IsSupersetOf({"收起 QuillMoss 刘海", "拒绝", "允许本次", "查看完整参数",
                             "复制", "去 QuillMoss 处理 ↗"}));
    arm("B");
    EXPECT_THAT(named(), IsSupersetOf({"上一条请求", "下一条请求"}));
    EXPECT_EQ(view.findChild<QListWidget*>()->accessibleName(), QStringLiteral("选择请求"));
    button("decision-deny").click();
    EXPECT_THAT(named(), IsSupersetOf({"继续查看 1 条待确认 →"}));
}

TEST_F(NotchViewTest, buttonsCallTheModel)
{
    button("compact").click();
    EXPECT_TRUE(model.state().isExpanded());
    button("header-close").click();
    EXPECT_FALSE(model.state().isExpanded());
    int settings = 0;
    model.showSettings = [&settings] { ++settings; };
    button("header-settings").click();
    EXPECT_EQ(settings, 1);
    model.expand();
    button("idle-demo").click();
    EXPECT_TRUE(model.state().isDemo);
    EXPECT_EQ(button("header-settings").accessibleName(), QStringLiteral("结束演示"));
    button("header-settings").click();
    EXPECT_FALSE(model.state().isDemo);
    EXPECT_EQ(settings, 1);
}

TEST_F(NotchViewTest, switchesAndCopies)
{
    arm("A");
    outside.request("B");
    button("switcher-next").click();
    EXPECT_EQ(shown("switcher-text"), QStringLiteral("待确认 2 / 2"));
    button("details-toggle").click();
    EXPECT_EQ(shown("details-header"), QStringLiteral("完整命令"));
    button("details-copy").click();
    EXPECT_EQ(outside.pasteboard.text, R"({"command":"ls"})");
    EXPECT_EQ(shown("details-copy"), QStringLiteral("已复制"));
    view.findChild<QListWidget*>()->setCurrentRow(0);
    EXPECT_EQ(model.state().interaction.current()->id, "A");
    EXPECT_EQ(shown("details-copy"), QStringLiteral("复制"));
    button("to-host").click();
    EXPECT_EQ(outside.takeCalls("open"), std::vector<std::string>{"open quillmoss"});
}

TEST_F(NotchViewTest, aReceiptLeadsToWhatStillWaits)
{
    arm("A");
    outside.request("B");
    QTest::mouseClick(&button("decision-allow"), Qt::LeftButton);
    EXPECT_EQ(shown("receipt-title"), QStringLiteral("已发送本次允许"));
    EXPECT_EQ(shown("header-text"), QStringLiteral("本次处理结果"));
    button("receipt-next").click();
    EXPECT_EQ(shown("header-text"), QStringLiteral("有操作需要你确认"));
    EXPECT_FALSE(button("decision-allow").isEnabled());
}

TEST_F(NotchViewTest, ticksOnlyWhileSomebodyCanSeeTheSeconds)
{
    EXPECT_FALSE(ticks());
    model.expand();
    EXPECT_FALSE(ticks()) << "nothing waits";
    outside.request("A");
    EXPECT_TRUE(ticks());
    model.collapse();
    EXPECT_FALSE(ticks()) << "closed";
    model.expand();
    EXPECT_TRUE(ticks());
    view.hide();
    EXPECT_FALSE(ticks()) << "hidden";
    view.show();
    EXPECT_TRUE(ticks());
    outside.remove("A");
    EXPECT_FALSE(ticks()) << "receipt";
    outside.time.advance(Seconds{5});
    auto endless = outside.nativeRequest("N");
    endless.expiresAt = outside.time.now() + Seconds{315360000};
    outside.monitor.callbacks.onRequest(endless);
    outside.time.runPosted();
    EXPECT_FALSE(ticks()) << "no deadline";
}

TEST_F(NotchViewTest, aTickShowsTheSecondsLeft)
{
    outside.request("A");
    EXPECT_EQ(shown("time-left"), QStringLiteral("50 秒"));
    outside.time.advance(Seconds{1});
    ASSERT_TRUE(runUntil([this] { return shown("time-left") == QStringLiteral("49 秒"); }));
    EXPECT_TRUE(ticks());
}

TEST_F(NotchViewTest, redrawingKeepsFocusSelectionAndScroll)
{
    auto request = outside.hookRequest("A");
    request.toolInputJSON = Json(Json::Object{{"command", std::string(4000, 'x')}}).compact();
    arrive(request);
    auto* const command = view.findChild<QPlainTextEdit*>(QStringLiteral("approval-command"));
    command->setFocus();
    command->selectAll();
    command->verticalScrollBar()->setValue(5);
    outside.request("B");
    passGuard();
    EXPECT_EQ(view.focusWidget(), command);
    EXPECT_TRUE(command->textCursor().hasSelection());
    EXPECT_EQ(command->verticalScrollBar()->value(), 5);
}

TEST_F(NotchViewTest, hostileTextStaysTextInItsPlace)
{
    const std::vector<std::pair<const char*, std::string>> rows{
        {"markup", "<b>允许本次</b><img src=x onerror=y>&amp;"},
        {"long word", std::string(3000, 'W')},
        {"long Chinese",
            [] {
                std::string text;
                for (int count = 0; count < 2000; ++count)
                    text += "删";
                return text;
            }()},
        {"many lines", "a" + std::string(500, '\n') + "b"},
        {"bidirectional", "\u202E\u2067 rm אבג /\u200F"},
        {"controls", "\x1b[2J\r\b\t\x7f"},
        {"stacked marks",
            [] {
                std::string text = "a";
                for (int count = 0; count < 500; ++count)
                    text += "\u0301";
                return text;
            }()},
    };
    for (const auto& [name, text] : rows) {
        SCOPED_TRACE(name);
        arrive(hostile(text));
        expectNothingLeavesThePanel();
        EXPECT_LT(view.height(), 560);
        EXPECT_EQ(shown("decision-allow"), QStringLiteral("允许本次"));
        EXPECT_FALSE(view.findChild<QWidget*>(QStringLiteral("approval-source"))
                         ->toolTip()
                         .contains(QStringLiteral("<b>")));
        for (const auto* const label : view.findChildren<QLabel*>())
            EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->text().toStdString();
        model.setShowAllParameters(true);
        expectNothingLeavesThePanel();
        outside.remove("A");
        outside.time.advance(Seconds{5});
    }
}

TEST_F(NotchViewTest, rightToLeftLettersStandInTheOrderInWhichTheyAreStored)
{
    arrive(hostile("rm א/ב ג"));
    const auto* const command =
        view.findChild<QPlainTextEdit*>(QStringLiteral("approval-parameters"));
    model.setShowAllParameters(true);
    QTextCursor cursor = command->document()->find(QStringLiteral("א/ב ג"));
    const int end = cursor.selectionEnd();
    cursor.setPosition(cursor.selectionStart());
    for (int left = -1; cursor.position() < end; cursor.movePosition(QTextCursor::NextCharacter)) {
        EXPECT_GT(command->cursorRect(cursor).left(), left) << cursor.position();
        left = command->cursorRect(cursor).left();
    }
}

TEST_F(NotchViewTest, theWholeTextCanBeReadAndSelected)
{
    const std::string text = "rm אב \u202E \n" + std::string(100'000, 'x') + " end";
    arrive(hostile(text));
    auto* const command = view.findChild<QPlainTextEdit*>(QStringLiteral("approval-parameters"));
    model.setShowAllParameters(true);
    command->setFocus();
    command->selectAll();
    command->copy();
    // As it is shown, without the marks that only keep it in order.
    const auto copied = QApplication::clipboard()->text().toStdString();
    EXPECT_EQ(copied.find(leftToRightOverride), std::string::npos);
    EXPECT_NE(copied.find("אב ‹U+202E›"), std::string::npos);
    EXPECT_NE(copied.find("x end"), std::string::npos);
}

} // namespace
} // namespace notch
