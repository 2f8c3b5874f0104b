// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Foundation/Json.h"
#include "ShownScene.h"
#include "Style/NotchStyle.h"
#include "Style/TextBlock.h"
#include "Style/VisibleText.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QTest>

namespace notch {
namespace {

using testing::HasSubstr;

TEST(VisibleText, showsWhatWouldHideOrReorder)
{
    struct Row {
        std::string text;
        std::string shown;
    };
    for (const auto& row : {
             Row{"rm -rf 目录 é", "rm -rf 目录 é"},
             Row{"a\n\tb", "a\n\tb"},
             Row{"safe\rrm", "safe‹U+000D›rm"},
             Row{{"\x1b[1m\0", 5}, "‹U+001B›[1m‹U+0000›"},
             Row{"\u202Etxt.exe", "‹U+202E›txt.exe"},
             Row{"\u2066a\u2069\u200F", "‹U+2066›a‹U+2069›‹U+200F›"},
             Row{"a\u200Bb\u00ADc\uFEFF", "a‹U+200B›b‹U+00AD›c‹U+FEFF›"},
             Row{"\u3164\U000E0041", "‹U+3164›‹U+E0041›"},
             Row{"a\u2028b\u0085", "a‹U+2028›b‹U+0085›"},
             Row{"rm אב/\nls", "rm אב/\nls"},
         }) {
        EXPECT_EQ(visibleText(row.text, Lines::many), row.shown);
    }
    EXPECT_EQ(visibleText("a\n\tב", Lines::one), "\u202Da‹U+000A›‹U+0009›ב\u202C");
}

TEST(TextBlock, hasTheWholeOfALongTextAndShowsItsEnd)
{
    for (const auto& text : {QStringLiteral("ab\n").repeated(300'000) + QLatin1String("end"),
             QStringLiteral("x").repeated(1'000'000)}) {
        TextBlock block(style::monospaced(12), Qt::white, 112, TextBlock::Ground::filled, nullptr);
        block.resize(416, 112);
        block.setContent(text.toStdString());
        const auto end = static_cast<int>(text.size());
        QTest::keyClick(&block, Qt::Key_End);
        EXPECT_TRUE(block.rect().contains(block.characterRect(end - 1)));
        QTest::keySequence(&block, QKeySequence::SelectAll);
        EXPECT_EQ(block.selectedText(), text);
        const auto* const heard = QAccessible::queryAccessibleInterface(&block)->textInterface();
        EXPECT_EQ(heard->text(0, heard->characterCount()), text);
    }
}

TEST(TextBlock, tellsALineFromARowThatContinuesOne)
{
    TextBlock block(style::monospaced(12), Qt::white, 112, TextBlock::Ground::filled, nullptr);
    block.resize(416, 112);
    block.setContent(std::string(90, 'x') + "\n" + std::string(90, 'x'));
    const auto first = block.characterRect(0);
    const auto continued = block.characterRect(block.positionAt({0, first.bottom() + 5.0}));
    EXPECT_GT(continued.top(), first.top());
    EXPECT_GT(continued.left(), first.left());
    EXPECT_EQ(block.characterRect(91).left(), first.left());
}

class HostileTextTest : public testing::Test, protected ShownScene {
protected:
    void arriveWith(const std::string& text)
    {
        auto made = command("A");
        made.toolName = made.sessionID = made.cwd = text;
        made.toolInputJSON = Json(Json::Object{{"command", text}, {"description", text}}).compact();
        arrive(made);
    }
    void expectNothingLeavesThePanel() const
    {
        for (const auto* const widget : view.findChildren<QWidget*>()) {
            const bool scrolls =
                widget->parentWidget()->objectName() == QLatin1String("qt_scrollarea_viewport");
            if (!widget->isVisible() || !widget->parentWidget()->parentWidget() || scrolls)
                continue;
            EXPECT_TRUE(widget->parentWidget()->rect().contains(widget->geometry()))
                << widget->objectName().toStdString() << ' ' << widget->metaObject()->className();
        }
    }

    TextBlock& parameters() const { return find<TextBlock>("approval-parameters"); }
};

TEST_F(HostileTextTest, staysTextInItsPlace)
{
    screenHeight = 480;
    for (const auto& text : {
             QStringLiteral("<b>允许本次</b><img src=x onerror=y>&amp;"),
             QStringLiteral("W").repeated(3000),
             QStringLiteral("删").repeated(2000),
             QStringLiteral("\n").repeated(500) + QStringLiteral("b"),
             QStringLiteral("\u202E\u2067 rm אבג /\u200F"),
             QStringLiteral("\x1b[2J\r\b\t\x7f"),
             QStringLiteral("a") + QStringLiteral("\u0301").repeated(500),
         }) {
        SCOPED_TRACE(text.left(40).toStdString());
        arriveWith(text.toStdString());
        expectNothingLeavesThePanel();
        EXPECT_LE(view.height(), screenHeight);
        EXPECT_EQ(this->text("decision-allow"), "允许本次");
        EXPECT_FALSE(find("approval-source").toolTip().contains(QStringLiteral("<b>")));
        for (const auto* const label : view.findChildren<QLabel*>())
            EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->text().toStdString();
        play("details, ask B, noHost, host demo");
        EXPECT_LE(view.height(), screenHeight);
        expectNothingLeavesThePanel();
        play("gone A, wait 5, gone B, wait 5");
    }
}

TEST_F(HostileTextTest, toolsOfOneServerLookDifferent)
{
    const auto titleOf = [this](const std::string& tool) {
        arriveWith(tool);
        const auto title = find("approval-title").grab().toImage();
        play("gone A, wait 5");
        return title;
    };
    const auto server = "mcp__" + std::string(170, 'g') + "__";
    EXPECT_NE(titleOf(server + "delete_repository"), titleOf(server + "delete_reaction"));
}

TEST_F(HostileTextTest, isShownAndCopiedInTheOrderInWhichItIsStored)
{
    arriveWith("rm א/ב ג \u202E \n" + std::string(100'000, 'x') + " end");
    play("details");
    const auto start = static_cast<int>(parameters().text().indexOf(QStringLiteral("א/ב ג")));
    for (int at = start, left = -1; at < start + 5; ++at) {
        EXPECT_GT(parameters().characterRect(at).left(), left) << at;
        left = parameters().characterRect(at).left();
    }
    QTest::keySequence(&parameters(), QKeySequence::SelectAll);
    QTest::keySequence(&parameters(), QKeySequence::Copy);
    const auto copied = QApplication::clipboard()->text().toStdString();
    EXPECT_THAT(copied, testing::AllOf(HasSubstr("rm א/ב ג ‹U+202E›"), HasSubstr("x end")));
    EXPECT_EQ(copied.size(), parameters().text().toUtf8().size());
}

} // namespace
} // namespace notch
