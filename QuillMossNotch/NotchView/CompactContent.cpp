// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/CompactContent.h"

namespace notch {
namespace {

// What the strip says while one thing or the other waits.
struct Row {
    std::string text;
    Symbol symbol = Symbol::none;
    std::string label;
};

Row waitingRow(std::size_t pending, DisplayState shown)
{
    const auto count = std::to_string(pending);
    if (pending > 0)
        return {count + " 条待确认", Symbol::handTap, count + " 条待确认请求"};
    if (shown == DisplayState::question)
        return {"QuillMoss · 待回答", Symbol::questionmarkBubble, "展开 QuillMoss 待回答提醒"};
    if (shown == DisplayState::completion)
        return {"QuillMoss · 本轮结束", Symbol::bellBadge, "展开 QuillMoss 刘海"};
    return {"QuillMoss", Symbol::none, "展开 QuillMoss 刘海"};
}

std::string_view compactToolTip(DisplayState shown, bool expanded)
{
    if (shown == DisplayState::question)
        return "仅提醒 · 收起不会代答或跳过问题";
    return expanded ? "点击收起 · 不改变任何审批决定" : "点击展开 · 收起不会允许或拒绝任何请求";
}

} // namespace

CompactContent::CompactContent(const AppModelState& state)
{
    const auto shown = displayState(state);
    const bool expanded = state.isExpanded();
    auto row = waitingRow(state.interaction.requests().size(), shown);
    attention = row.symbol != Symbol::none;
    text = std::move(row.text);
    const auto idleSymbol = expanded ? Symbol::chevronUp : Symbol::chevronDown;
    symbol = attention ? row.symbol : idleSymbol;
    toolTip = compactToolTip(shown, expanded);
    label = expanded ? "收起 QuillMoss 刘海" : std::move(row.label);
}

} // namespace notch
