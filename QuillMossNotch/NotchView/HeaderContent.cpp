// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/HeaderContent.h"

namespace notch {
namespace {

std::string_view headerText(const AppModelState& state, DisplayState shown)
{
    if (state.isDemo)
        return "交互演示 · 不执行命令";
    switch (shown) {
    case DisplayState::receipt:
        return "本次处理结果";
    case DisplayState::approval:
        return "有操作需要你确认";
    case DisplayState::question:
        return "有问题等你回答 · 仅提醒";
    case DisplayState::completion:
        return "本轮已结束 · 请核对结果";
    case DisplayState::idle:
        break;
    }
    return "刘海提醒 · 随时待命";
}

} // namespace

HeaderContent::HeaderContent(const AppModelState& state)
    : endsDemo(state.isDemo)
{
    const auto shown = displayState(state);
    const bool question = shown == DisplayState::question;
    text = headerText(state, shown);
    avatar = question ? Symbol::questionmarkBubbleFill : Symbol::checkmarkShieldFill;
    settingsLabel = endsDemo ? "结束演示" : "接入与交互设置";
    closeLabel = question ? "暂时收起，不回答或跳过问题" : "暂时收起，不改变审批决定";
    closeToolTip =
        question ? "暂时收起（Esc），不回答或跳过问题" : "暂时收起（Esc），不改变审批决定";
}

} // namespace notch
