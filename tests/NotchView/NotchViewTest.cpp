// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/SymbolPath.h"
#include "Scene.h"

#include <gtest/gtest.h>

#include <QListWidget>
#include <QPlainTextEdit>
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
    struct Row {
        const char* before; // In the words of a scene.
        const char* clicked;
        const char* lookedAt;
        const char* shown;
        const char* done; // What others were told, and whether the notch is closed.
    };
    model.showSettings = [this] { outside.calls.emplace_back("settings"); };
    for (const auto& row : {
             Row{"", "compact", "header-text", "刘海提醒 · 随时待命", ""},
             Row{"", "header-settings", "idle-title", "已就绪，等待新事件", "settings;"},
             Row{"", "idle-main", "idle-main", "打开 QuillMoss ↗", "open quillmoss;"},
             Row{"unconnected", "idle-main", "idle-main", "接入 QuillMoss", "settings;"},
             Row{"nativeApprovalsEnabled open", "idle-main", "idle-main", "开启辅助功能",
                 "monitor.requestAccess;open settings;monitor.start approvals questions;"},
             Row{"", "idle-demo", "header-text", "交互演示 · 不执行命令", ""},
             Row{"", "header-settings", "receipt-title", "演示已结束", ""},
             Row{"5", "header-close", "compact", "QuillMoss", "closed"},
             Row{"hook edit hook", "switcher-next", "switcher-text", "待确认 2 / 3", ""},
             Row{"", "switcher-previous", "switcher-text", "待确认 1 / 3", ""},
             Row{"", "details-toggle", "details-toggle", "返回命令视图", ""},
             Row{"", "details-toggle", "details-toggle", "查看完整参数", ""},
             Row{"", "details-copy", "details-copy", "已复制", ""},
             Row{"", "to-host", "to-host", "去 QuillMoss 处理 ↗", "open quillmoss;"},
             Row{"0.5", "decision-deny", "receipt-title", "已发送拒绝", "server.decide A deny;"},
             Row{"", "receipt-next", "header-text", "有操作需要你确认", ""},
             Row{"", "compact", "compact", "2 条待确认", "closed"},
         }) {
        play(row.before);
        layOut();
        outside.takeCalls();
        button(row.clicked).click();
        std::string done;
        for (const auto& call : outside.takeCalls())
            done += call.starts_with("reminders") ? "" : call + ';';
        done += model.state().isExpanded() ? "" : "closed";
        EXPECT_EQ(text(row.lookedAt), row.shown) << row.clicked;
        EXPECT_EQ(done, row.done) << row.clicked;
    }
    EXPECT_EQ(outside.pasteboard.text,
        "rm -rf build && cmake --preset release\ncmake --build --preset release");
    play("open");
    find<QListWidget>("switcher-list").setCurrentRow(1);
    EXPECT_EQ(text("switcher-text"), "待确认 2 / 2");
}

TEST_F(NotchViewTest, ticksOnlyWhileSomebodyCanSeeTheSeconds)
{
    EXPECT_FALSE(nextTick());
    play("open");
    EXPECT_FALSE(nextTick()) << "nothing waits";
    play("hook");
    EXPECT_EQ(nextTick(), 1005);
    outside.time.advance(Seconds{1});
    EXPECT_TRUE(QTest::qWaitFor([this] { return text("time-left") == "49 秒"; }));
    EXPECT_EQ(nextTick(), 1005);
    play("close");
    EXPECT_FALSE(nextTick());
    play("38.5 open");
    EXPECT_EQ(nextTick(), 505);
    view.hide();
    EXPECT_FALSE(nextTick());
    view.show();
    EXPECT_TRUE(nextTick());
    play("gone");
    EXPECT_FALSE(nextTick()) << "receipt";
    play("5 card");
    EXPECT_FALSE(nextTick()) << "no deadline";
}

TEST_F(NotchViewTest, redrawingKeepsFocusSelectionAndScroll)
{
    play("long");
    auto& command = find<QPlainTextEdit>("approval-command");
    command.setFocus();
    command.selectAll();
    command.verticalScrollBar()->setValue(5);
    const int scrolled = command.verticalScrollBar()->value();
    EXPECT_GT(scrolled, 0);
    play("hook 0.5");
    EXPECT_EQ(view.focusWidget(), &command);
    EXPECT_TRUE(command.textCursor().hasSelection());
    EXPECT_EQ(command.verticalScrollBar()->value(), scrolled);
}

} // namespace
} // namespace notch
