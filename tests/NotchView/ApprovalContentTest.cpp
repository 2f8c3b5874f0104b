// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/ApprovalContent.h"
#include "NotchView/SwitcherContent.h"
#include "NotchView/VisibleText.h"
#include "support/FakeOutside.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string>

namespace notch {
namespace {

ApprovalRequest request()
{
    auto made = FakeOutside().hookRequest("A");
    made.sessionID = "0123456789abcdef";
    return made;
}

ApprovalRequest card()
{
    auto made = request();
    made.eventName = nativeApprovalEventName;
    made.sessionID = "窗口";
    return made;
}

std::string printed(const ApprovalContent& content)
{
    std::string lines;
    for (const auto part :
        {content.banner, std::string_view(content.title), std::string_view(content.description),
            name(content.originSymbol), std::string_view(content.origin),
            std::string_view(content.source), std::string_view(content.sourceToolTip), content.chip,
            content.negativeText, content.positiveText})
        lines += std::string(part) + '\n';
    return lines;
}

TEST(ApprovalContent, describesAHookRequest)
{
    auto made = request();
    made.toolInputJSON = R"({"command":"ls","description":"列出"})";
    EXPECT_EQ(printed(ApprovalContent(made)),
        "\n执行终端命令\n原请求说明：列出\nfolder\n/home/a/notch\n"
        "QuillMoss · 0123456789ab\n会话：0123456789abcdef\n目录：/home/a/notch\n"
        "超时交回原窗口\n拒绝\n允许本次\n");
}

TEST(ApprovalContent, describesACardOfTheHostsWindow)
{
    EXPECT_EQ(printed(ApprovalContent(card())),
        "原生安全确认 · 只点击当前这张卡，不更改权限策略\n确认批量删除\n\nmacwindow\n"
        "来自 QuillMoss 原窗口\n原窗口：窗口\n原窗口：窗口\n点击前重新核验\n取消删除\n"
        "允许本次删除\n");
}

TEST(ApprovalContent, namesTheSourceAndTheSession)
{
    auto made = request();
    made.source = "quillmossAI";
    EXPECT_EQ(ApprovalContent(made).source, "QuillMoss AI · 0123456789ab");
    made.source = "quillmossai";
    made.sessionID = "";
    EXPECT_EQ(ApprovalContent(made).source, "QuillMoss · 未提供会话");
    made.sessionID = "会话一二三四五六七八九十百千";
    EXPECT_EQ(ApprovalContent(made).source, "QuillMoss · 会话一二三四五六七八九十");
}

TEST(ApprovalContent, headsTheDetailsByTheTool)
{
    struct Row {
        const char* tool;
        const char* input;
        const char* header;
        const char* chip;
    };
    const Row rows[]{
        {"Bash", R"({"command":"ls"})", "完整命令", ""},
        {"Bash", R"({"command":"ls","timeout":1})", "完整命令", "含附加参数"},
        {"Write", R"({"file":"a"})", "工具参数", ""},
        {"Write", "{}", "完整请求信息", ""},
        {"Bash", "{}", "完整请求信息", ""},
    };
    for (const auto& row : rows) {
        auto made = request();
        made.toolName = row.tool;
        made.toolInputJSON = row.input;
        const ApprovalContent content(made);
        EXPECT_EQ(content.detailsHeader, row.header) << row.tool << row.input;
        EXPECT_EQ(content.detailsChip, row.chip) << row.tool << row.input;
        EXPECT_EQ(content.parameters, row.input);
    }
    auto native = card();
    native.toolName = "原生安全确认";
    EXPECT_EQ(ApprovalContent(native).detailsHeader, "完整命令");
}

TEST(ApprovalContent, marksTheCopiedRequestOnly)
{
    EXPECT_EQ(copyButton(request(), "A").text, "已复制");
    EXPECT_EQ(copyButton(request(), "A").symbol, Symbol::checkmark);
    EXPECT_EQ(copyButton(request(), "B").text, "复制");
    EXPECT_EQ(copyButton(request(), std::nullopt).symbol, Symbol::docOnDoc);
}

TEST(ApprovalContent, togglesTheDetailsInWords)
{
    NotchInteraction interaction;
    EXPECT_EQ(detailsToggle(interaction).text, "查看完整参数");
    EXPECT_EQ(detailsToggle(interaction).symbol, Symbol::chevronDown);
    interaction.showAllParameters = true;
    EXPECT_EQ(detailsToggle(interaction).text, "返回命令视图");
    EXPECT_EQ(detailsToggle(interaction).symbol, Symbol::chevronUp);
}

TEST(TimeLine, countsDownAndWarnsFromTenSeconds)
{
    struct Row {
        double left;
        const char* seconds;
        bool urgent;
        double nextChange;
    };
    const Row rows[]{{50, "50 秒", false, 1}, {10.5, "11 秒", false, 0.5}, {10, "10 秒", true, 1},
        {0.25, "1 秒", true, 0.25}, {0, "0 秒", true, 1}, {-3, "0 秒", true, 1}};
    for (const auto& row : rows) {
        const auto made = request();
        const auto line = TimeLine::of(made, made.expiresAt + Seconds{-row.left});
        ASSERT_TRUE(line);
        EXPECT_EQ(line->seconds, row.seconds);
        EXPECT_EQ(line->urgent, row.urgent) << row.left;
        EXPECT_EQ(line->note, "时间用尽交回 QuillMoss 原流程，不自动允许");
        EXPECT_NEAR(line->nextChange.count(), row.nextChange, 1e-6) << row.left;
    }
}

TEST(TimeLine, isAbsentForACardThatWaitsWithoutEnd)
{
    auto made = card();
    const auto now = made.expiresAt;
    made.expiresAt = now + Seconds{315360000};
    EXPECT_FALSE(TimeLine::of(made, now));
}

TEST(SwitcherContent, standsOnlyWhereThereIsAChoice)
{
    const FakeOutside outside;
    const auto now = outside.time.now();
    NotchInteraction interaction;
    EXPECT_FALSE(SwitcherContent::of(interaction));
    interaction.receive(outside.hookRequest("A"), now);
    EXPECT_FALSE(SwitcherContent::of(interaction));
    interaction.receive(outside.hookRequest("B"), now);
    interaction.select("B", now);
    const auto content = SwitcherContent::of(interaction);
    ASSERT_TRUE(content);
    EXPECT_EQ(content->text, "待确认 2 / 2");
    EXPECT_EQ(content->position, 1U);
    EXPECT_EQ(content->entries.front(),
        (SwitcherContent::Entry{.id = "A", .label = "执行终端命令 · notch"}));
}

TEST(VisibleText, breaksLinesThatAreTooLong)
{
    auto shown = visibleText(std::string(3'000, 'x') + "\n\u2060", Lines::many);
    EXPECT_EQ(std::ranges::count(shown, '\n'), 3);
    while (shown.find(softBreak) != std::string::npos)
        shown.erase(shown.find(softBreak), softBreak.size());
    EXPECT_EQ(shown, std::string(3'000, 'x') + "\n‹U+2060›");
    EXPECT_EQ(visibleText(std::string(3'000, 'x'), Lines::one), std::string(3'000, 'x'));
}

TEST(VisibleText, showsWhatWouldHideOrReorder)
{
    struct Row {
        const char* name;
        std::string text;
        std::string one;
        std::string many;
    };
    const std::string lro(leftToRightOverride);
    const std::string pdf(popDirectionalFormatting);
    const Row rows[]{
        {"plain", "rm -rf 目录 é", "rm -rf 目录 é", "rm -rf 目录 é"},
        {"line breaks and tabs", "a\n\tb", "a‹U+000A›‹U+0009›b", "a\n\tb"},
        {"carriage return", "safe\rrm", "safe‹U+000D›rm", "safe‹U+000D›rm"},
        {"escape and nul", std::string("\x1b[1m\0", 5), "‹U+001B›[1m‹U+0000›",
            "‹U+001B›[1m‹U+0000›"},
        {"override", "\u202Etxt.exe", "‹U+202E›txt.exe", "‹U+202E›txt.exe"},
        {"isolates and marks", "\u2066a\u2069\u200F", "‹U+2066›a‹U+2069›‹U+200F›",
            "‹U+2066›a‹U+2069›‹U+200F›"},
        {"invisible", "a\u200Bb\u00ADc\uFEFF", "a‹U+200B›b‹U+00AD›c‹U+FEFF›",
            "a‹U+200B›b‹U+00AD›c‹U+FEFF›"},
        {"fillers and tags", "\u3164\U000E0041", "‹U+3164›‹U+E0041›", "‹U+3164›‹U+E0041›"},
        {"line separators", "a\u2028b\u0085", "a‹U+2028›b‹U+0085›", "a‹U+2028›b‹U+0085›"},
        {"right to left", "rm אב/\nls", lro + "rm אב/‹U+000A›ls" + pdf,
            lro + "rm אב/" + pdf + "\nls"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(visibleText(row.text, Lines::one), row.one) << row.name;
        EXPECT_EQ(visibleText(row.text, Lines::many), row.many) << row.name;
    }
}

} // namespace
} // namespace notch
