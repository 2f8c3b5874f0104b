// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>

namespace notch {

// A turn of the host that ended. It says nothing of the task: only the host can.
inline constexpr std::string_view completionTitle = "QuillMoss 本轮已结束";
inline constexpr std::string_view completionNote =
    "请返回原应用查看结果。\n生成、上传等后台任务的状态，以原应用为准。";
inline constexpr std::string_view completionFailure = "无法切换，请手动打开 QuillMoss";
inline constexpr std::string_view completionDismissText = "知道了";
inline constexpr std::string_view completionOpenText = "打开 QuillMoss";
inline constexpr std::string_view completionOpenToolTip =
    "仅切回原应用，不选择会话，不操作任务或审批";

} // namespace notch
