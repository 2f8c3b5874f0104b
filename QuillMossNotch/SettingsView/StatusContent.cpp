// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SettingsView/StatusContent.h"

#include <algorithm>
#include <array>
#include <utility>

namespace notch {
namespace {

using State = SettingsHookConfiguration::State;

constexpr std::array<std::pair<State, StatusLine>, 6> configurationLines{{
    {State::checking, {Symbol::ellipsisCircle, Tone::secondary, "正在检查配置"}},
    {State::installed, {Symbol::checkmarkCircleFill, Tone::good, "本应用 Hook：配置已安装"}},
    {State::missing, {Symbol::circleDashed, Tone::secondary, "本应用 Hook：未安装"}},
    {State::reconnect,
        {Symbol::exclamationmarkTriangleFill, Tone::caution, "本应用 Hook：路径需重连"}},
    {State::review,
        {Symbol::exclamationmarkTriangleFill, Tone::caution, "本应用 Hook：配置需检查"}},
    {State::invalid, {Symbol::exclamationmarkTriangleFill, Tone::bad, "配置错误 / 无法读取"}},
}};

constexpr StatusLine granted{Symbol::checkmarkShield, Tone::secondary, "辅助功能权限已授权"};
constexpr StatusLine notGranted{Symbol::exclamationmarkTriangleFill, Tone::caution,
    "尚未授权辅助功能：原生审批与提问提醒不会生效"};

constexpr StatusLine turnEndInstalled{Symbol::link, Tone::secondary, "独立通知 Hook 已安装"};
constexpr StatusLine turnEndMissing{
    Symbol::linkBadgePlus, Tone::secondary, "尚未安装到当前应用位置"};

} // namespace

AccessStatus::AccessStatus(const AppModelState& state)
    : line(state.nativeAccessGranted ? granted : notGranted)
    , canAsk(!state.nativeAccessGranted)
{
}

TurnEndStatus::TurnEndStatus(const AppModelState& state, const HookFlowState& flow)
    : line(state.completionHookInstalled ? turnEndInstalled : turnEndMissing)
    , installText(state.completionHookInstalled ? "更新结束提醒接入…" : "安装结束提醒接入…")
    , buttonsEnabled(!flow.busy)
{
}

ConfigurationStatus::ConfigurationStatus(const HookFlowState& flow)
    : line(std::ranges::find(configurationLines, flow.configuration.state,
        [](const auto& row) {
            return row.first;
        })->second)
    , warnsOfInterception(flow.configuration.interceptBash.value_or(false))
    , installText(flow.configuration.state == State::missing ? "安装接入…" : "更新接入…")
    , canInstall(flow.configuration.interceptBash && flow.hasExecutable)
{
}

ResultStatus::ResultStatus(const HookFlowState& flow)
    : line{flow.operationFailed ? Symbol::exclamationmarkCircleFill : Symbol::checkmarkCircleFill,
        flow.operationFailed ? Tone::bad : Tone::good, flow.result}
    , hasBackup(flow.backupURL.has_value())
{
}

} // namespace notch
