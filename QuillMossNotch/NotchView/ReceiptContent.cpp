// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/ReceiptContent.h"

#include <array>

namespace notch {
namespace {

using Feedback = NotchInteraction::Feedback;
using Kind = Feedback::Kind;
using Tint = ReceiptContent::Tint;

struct Row {
    Kind kind = Kind::unavailable;
    std::string_view demo;
    std::string_view native;
    std::string_view hook;
    Symbol symbol = Symbol::none;
    Tint tint = Tint::muted;
};

constexpr std::array<Row, 5> rows{{
    {Kind::allowed, "已体验允许本次", "已点击原生允许", "已发送本次允许",
        Symbol::checkmarkCircleFill, Tint::accent},
    {Kind::denied, "已体骁拒绝", "已点击原生取消", "已发送拒绝", Symbol::xmarkCircleFill,
        Tint::warning},
    {Kind::returned, "演示已结束", "已交回 QuillMoss", "已交回 QuillMoss",
        Symbol::arrowUpForwardCircleFill, Tint::accent},
    {Kind::expired, "等待已超时", "等待已超时", "等待已超时", Symbol::clockArrowCirclepath,
        Tint::warning},
    {Kind::unavailable, "请在原窗口核对", "请在原窗口核对", "请在原窗口核对",
        Symbol::minusCircleFill, Tint::muted},
}};

const Row& rowOf(Kind kind)
{
    for (const auto& row : rows) {
        if (row.kind == kind)
            return row;
    }
    return rows.back();
}

std::string_view titleOf(const Row& row, const Feedback& feedback)
{
    if (feedback.isDemo)
        return row.demo;
    return feedback.isNative ? row.native : row.hook;
}

std::string_view noteOf(const Feedback& feedback)
{
    if (feedback.isDemo)
        return "没有执行命令，也没有修改权限";
    if (feedback.kind == Kind::expired || feedback.kind == Kind::unavailable)
        return "请在原应用检查状态，不会自动重试";
    return feedback.isNative ? "仅操作原按钮，请以 QuillMoss 实际结果为准"
                             : "仅作用于刚才的请求，不影响后续权限";
}

} // namespace

ReceiptContent::ReceiptContent(const Feedback& feedback, std::size_t pending)
{
    const auto& row = rowOf(feedback.kind);
    title = titleOf(row, feedback);
    symbol = row.symbol;
    tint = row.tint;
    note = noteOf(feedback);
    if (pending > 0)
        next = "继续查看 " + std::to_string(pending) + " 条待确认 →";
}

} // namespace notch
