// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/IdleContent.h"

namespace notch {
namespace {

std::string_view titleOf(const AppModelState& state)
{
    if (!state.serviceReady)
        return "桥接暂不可用";
    return state.configuredProfiles.empty() ? "还差一步，接入 QuillMoss" : "已就绪，等待新事件";
}

std::optional<std::string> statusLineOf(const AppModelState& state)
{
    if (state.configuredProfiles.empty())
        return std::nullopt;
    std::string line;
    for (const auto& profile : state.configuredProfiles)
        line += (line.empty() ? "" : "、") + profile;
    line += " · Hook 已安装";
    return line + (state.lastHookAt ? "，本次运行已收到请求" : "，等待请求");
}

} // namespace

IdleContent::IdleContent(const AppModelState& state)
    : title(titleOf(state))
    , statusLine(statusLineOf(state))
{
    const bool configured = !state.configuredProfiles.empty();
    note = configured ? "收到支持的事件时提醒，平时保持安静。"
                      : "安装审批 Hook 后重启 QuillMoss，\n支持的工具请求就会出现在这里。";
    const auto& on = state.switches;
    if (on.isOn(Preference::completionRemindersEnabled))
        completionLine = "结束提醒 · " + state.completionStatus;
    if (on.isOn(Preference::nativeApprovalsEnabled)
        || on.isOn(Preference::questionRemindersEnabled))
        nativeLine = "原生检测（删除/提问）· " + state.nativeStatus;
    if (on.isOn(Preference::nativeApprovalsEnabled) && !state.nativeAccessGranted) {
        action = Action::grantAccess;
        actionText = "开启辅助功能";
    } else if (configured) {
        action = Action::openHost;
        actionText = "打开 QuillMoss ↗";
    } else {
        actionText = "接入 QuillMoss";
    }
}

} // namespace notch
