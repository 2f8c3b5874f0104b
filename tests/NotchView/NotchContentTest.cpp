// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/CompactContent.h"
#include "NotchView/HeaderContent.h"
#include "NotchView/IdleContent.h"
#include "NotchView/ReceiptContent.h"
#include "support/FakeOutside.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace notch {
namespace {

using Feedback = NotchInteraction::Feedback;
using Kind = Feedback::Kind;

std::string text(std::string_view part)
{
    return std::string(part);
}

std::string joined(const std::vector<std::string>& parts)
{
    std::string line;
    for (const auto& part : parts)
        line += (line.empty() ? "" : " | ") + part;
    return line;
}

// What waits for the person, in words that the tables below use.
AppModelState stateOf(const std::string& words)
{
    const FakeOutside outside;
    const auto now = outside.time.now();
    AppModelState state;
    const auto has = [&](const char* word) { return words.find(word) != std::string::npos; };
    if (has("request"))
        state.interaction.receive(outside.hookRequest("A"), now);
    if (has("requests"))
        state.interaction.receive(outside.hookRequest("B"), now);
    if (has("receipt"))
        state.interaction.finish("A", Kind::allowed, false);
    state.questionVisible = has("question");
    state.completionVisible = has("turn end");
    state.isDemo = has("demo");
    if (has("open"))
        state.interaction.expand(now);
    if (has("closed"))
        state.interaction.collapse();
    return state;
}

ShownFeatures allOn()
{
    ShownFeatures features;
    features.completionsEnabled = true;
    return features;
}

struct Row {
    const char* state;
    const char* expected;
};

TEST(HeaderContent, namesTheFirstThatHolds)
{
    constexpr auto settings = " | slider.horizontal.3 接入与交互设置";
    constexpr auto close = " | 暂时收起，不改变审批决定 | 暂时收起（Esc），不改变审批决定";
    const std::vector<std::pair<const char*, std::string>> rows{
        {"demo request", std::string("交互演示 · 不执行命令 | checkmark.shield.fill | "
                                     "slider.horizontal.3 结束演示")
                             + close},
        {"requests receipt question",
            std::string("本次处理结果 | checkmark.shield.fill") + settings + close},
        {"request question",
            std::string("有操作需要你确认 | checkmark.shield.fill") + settings + close},
        {"question turn end",
            std::string("有问题等你回答 · 仅提醒 | questionmark.bubble.fill") + settings
                + " | 暂时收起，不回答或跳过问题 | 暂时收起（Esc），不回答或跳过问题"},
        {"turn end",
            std::string("本轮已结束 · 请核对结果 | checkmark.shield.fill") + settings + close},
        {"", std::string("刘海提醒 · 随时待命 | checkmark.shield.fill") + settings + close},
    };
    for (const auto& [state, expected] : rows) {
        const HeaderContent content(stateOf(state), allOn());
        EXPECT_EQ(joined({text(content.text), text(name(content.avatar)),
                      "slider.horizontal.3 " + text(content.settingsLabel),
                      text(content.closeLabel), text(content.closeToolTip)}),
            expected)
            << state;
        EXPECT_EQ(content.endsDemo, stateOf(state).isDemo) << state;
    }
}

TEST(CompactContent, saysWhatWaitsAndWhatAClickDoes)
{
    const Row rows[]{
        {"closed", "- | QuillMoss | chevron.down | 点击展开 · 收起不会允许或拒绝任何请求 | "
                   "展开 QuillMoss 刘海"},
        {"open", "- | QuillMoss | chevron.up | 点击收起 · 不改变任何审批决定 | "
                 "收起 QuillMoss 刘海"},
        {"request closed", "! | 1 条待确认 | hand.tap | "
                           "点击展开 · 收起不会允许或拒绝任何请求 | 1 条待确认请求"},
        {"requests question", "! | 2 条待确认 | hand.tap | 点击收起 · 不改变任何审批决定 | "
                              "收起 QuillMoss 刘海"},
        {"requests receipt closed", "! | 1 条待确认 | hand.tap | "
                                    "点击展开 · 收起不会允许或拒绝任何请求 | 1 条待确认请求"},
        {"question closed", "! | QuillMoss · 待回答 | questionmark.bubble | "
                            "仅提醒 · 收起不会代答或跳过问题 | 展开 QuillMoss 待回答提醒"},
        {"question open", "! | QuillMoss · 待回答 | questionmark.bubble | "
                          "仅提醒 · 收起不会代答或跳过问题 | 收起 QuillMoss 刘海"},
        {"turn end closed", "! | QuillMoss · 本轮结束 | bell.badge | "
                            "点击展开 · 收起不会允许或拒绝任何请求 | 展开 QuillMoss 刘海"},
    };
    for (const auto& [state, expected] : rows) {
        const CompactContent content(stateOf(state), allOn());
        EXPECT_EQ(joined({content.attention ? "!" : "-", content.text, text(name(content.symbol)),
                      text(content.toolTip), content.label}),
            expected)
            << state;
    }
}

TEST(CompactContent, keepsSilentAboutTurnEndsThatAreSwitchedOff)
{
    EXPECT_EQ(CompactContent(stateOf("turn end"), ShownFeatures()).text, "QuillMoss");
}

TEST(ReceiptContent, tellsWhatWasDoneAndWhatWasNot)
{
    constexpr auto hookNote = " | 仅作用于刚才的请求，不影响后续权限";
    constexpr auto nativeNote = " | 仅操作原按钮，请以 QuillMoss 实际结果为准";
    constexpr auto demoNote = " | 没有执行命令，也没有修改权限";
    constexpr auto checkNote = " | 请在原应用检查状态，不会自动重试";
    struct Kinds {
        Kind kind;
        std::string look, demo, native, hook, nativeNote, hookNote;
    };
    const Kinds rows[]{
        {Kind::allowed, "checkmark.circle.fill accent | ", "已体验允许本次", "已点击原生允许",
            "已发送本次允许", nativeNote, hookNote},
        {Kind::denied, "xmark.circle.fill warning | ", "已体骁拒绝", "已点击原生取消", "已发送拒绝",
            nativeNote, hookNote},
        {Kind::returned, "arrow.up.forward.circle.fill accent | ", "演示已结束", "已交回 QuillMoss",
            "已交回 QuillMoss", nativeNote, hookNote},
        {Kind::expired, "clock.arrow.circlepath warning | ", "等待已超时", "等待已超时",
            "等待已超时", checkNote, checkNote},
        {Kind::unavailable, "minus.circle.fill muted | ", "请在原窗口核对", "请在原窗口核对",
            "请在原窗口核对", checkNote, checkNote},
    };
    const auto shown = [](Kind kind, bool isDemo, bool isNative) {
        const ReceiptContent content({.kind = kind, .isDemo = isDemo, .isNative = isNative}, 0);
        constexpr const char* tints[]{"muted", "accent", "warning"};
        return text(name(content.symbol)) + ' ' + tints[static_cast<int>(content.tint)] + " | "
             + text(content.title) + " | " + text(content.note);
    };
    for (const auto& row : rows) {
        EXPECT_EQ(shown(row.kind, false, false), row.look + row.hook + row.hookNote);
        EXPECT_EQ(shown(row.kind, false, true), row.look + row.native + row.nativeNote);
        EXPECT_EQ(shown(row.kind, true, false), row.look + row.demo + demoNote);
        EXPECT_EQ(shown(row.kind, true, true), row.look + row.demo + demoNote);
    }
}

TEST(ReceiptContent, leadsOnWhileOthersWait)
{
    EXPECT_EQ(ReceiptContent({}, 0).next, std::nullopt);
    EXPECT_EQ(ReceiptContent({}, 3).next, "继续查看 3 条待确认 →");
}

TEST(IdleContent, tellsHowThingsStandAndTheNextStep)
{
    struct Idle {
        const char* name;
        bool serving, configured, heard, native, granted;
        const char* expected;
    };
    constexpr auto quiet = "收到支持的事件时提醒，平时保持安静。";
    const Idle rows[]{
        {"no bridge", false, false, false, false, false,
            "桥接暂不可用 | 安装审批 Hook 后重启 QuillMoss，\n支持的工具请求就会出现在这里。 | - | "
            "接入 QuillMoss"},
        {"not connected", true, false, false, false, false,
            "还差一步，接入 QuillMoss | 安装审批 Hook 后重启 "
            "QuillMoss，\n支持的工具请求就会出现在这里"
            "。 | - | 接入 QuillMoss"},
        {"connected", true, true, false, false, false,
            "已就绪，等待新事件 | Q | QuillMoss、QuillMoss AI · Hook 已安装，等待请求 | "
            "打开 QuillMoss ↗"},
        {"heard", true, true, true, true, true,
            "已就绪，等待新事件 | Q | QuillMoss、QuillMoss AI · Hook 已安装，本次运行已收到请求 | "
            "打开 QuillMoss ↗"},
        {"no access", true, true, false, true, false,
            "已就绪，等待新事件 | Q | QuillMoss、QuillMoss AI · Hook 已安装，等待请求 | "
            "开启辅助功能"},
    };
    for (const auto& row : rows) {
        AppModelState state;
        state.serviceReady = row.serving;
        if (row.configured)
            state.configuredProfiles = {"QuillMoss", "QuillMoss AI"};
        if (row.heard)
            state.lastHookAt = Date{1};
        state.nativeAccessGranted = row.granted;
        ShownFeatures features;
        features.nativeEnabled = row.native;
        const IdleContent content(state, features);
        const auto note = content.note == quiet ? "Q" : text(content.note);
        EXPECT_EQ(joined({text(content.title), note, content.statusLine.value_or("-"),
                      text(content.actionText)}),
            row.expected)
            << row.name;
    }
}

TEST(IdleContent, showsTheLinesOfWhatIsSwitchedOn)
{
    AppModelState state;
    state.completionStatus = "C";
    state.nativeStatus = "N";
    ShownFeatures features;
    features.questionsEnabled = false;
    EXPECT_EQ(IdleContent(state, features).nativeLine, std::nullopt);
    EXPECT_EQ(IdleContent(state, features).completionLine, std::nullopt);
    features.questionsEnabled = true;
    features.completionsEnabled = true;
    EXPECT_EQ(IdleContent(state, features).nativeLine, "原生检测（删除/提问）· N");
    EXPECT_EQ(IdleContent(state, features).completionLine, "结束提醒 · C");
}

} // namespace
} // namespace notch
