// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>

// What the monitor says of itself. No text of the host is ever part of it.
namespace notch::monitorText {

inline constexpr std::string_view waiting = "等待 QuillMoss 的原生删除确认";
inline constexpr std::string_view needsAccess =
    "需要辅助功能权限，才能读取 QuillMoss 的确认卡或提问卡";
inline constexpr std::string_view notRunning = "QuillMoss 未运行";
inline constexpr std::string_view severalInstances = "存在多个 QuillMoss 实例，请在原窗口确认";
inline constexpr std::string_view inFront = "QuillMoss 正在前台，原生确认留在原窗口";
inline constexpr std::string_view hidden = "QuillMoss 已隐藏，请打开原窗口确认";
inline constexpr std::string_view questionOnly = "已发现后台 QuillMoss 提问，刘海仅提供去回答";
inline constexpr std::string_view waitingForQuestion = "等待后台 QuillMoss 提问（删除审批已关闭）";
inline constexpr std::string_view questionInFallback =
    "已读取后台提问；备用窗口仅用于提醒，不用于审批";
inline constexpr std::string_view incomplete = "无法完整读取原生确认，请在 QuillMoss 中确认";
inline constexpr std::string_view refusedCard =
    "已读到审批按钮，但卡片结构或完整命令未通过校验，请在 QuillMoss 确认";
inline constexpr std::string_view contextChanged = "原生确认的上下文已变化，请在 QuillMoss 中确认";
inline constexpr std::string_view stateChanged = "QuillMoss 状态已变化，请在原窗口确认";
inline constexpr std::string_view found = "已发现后台 QuillMoss 的原生删除确认";
inline constexpr std::string_view accessLost = "辅助功能权限不可用，请在 QuillMoss 中确认";
inline constexpr std::string_view cardChanged =
    "原生确认已变化或无法完整读取，请在 QuillMoss 中确认";
inline constexpr std::string_view buttonUnavailable =
    "原生按钮不可用或 QuillMoss 已在前台，请在原窗口确认";
inline constexpr std::string_view pressed = "已点击原生确认按钮；结果以 QuillMoss 为准";
inline constexpr std::string_view pressFailed = "原生按钮操作失败，请在 QuillMoss 中确认";

} // namespace notch::monitorText
