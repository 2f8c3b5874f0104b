// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Interaction/QuestionReminder.h"

#include <string>
#include <string_view>

namespace notch {

// A question that the host waits on. Its texts come from the host and are safe to show as they are
// here (see VisibleText.h).
struct QuestionContent {
    std::string question;
    std::string page;

    explicit QuestionContent(const QuestionReminder& reminder);

    bool operator==(const QuestionContent&) const = default;
};

inline constexpr std::string_view questionTitle = "QuillMoss 等你回答";
inline constexpr std::string_view questionNote =
    "仅提醒，请回 QuillMoss 选择或填写。\n这里不会代选、填写、跳过或提交。";
inline constexpr std::string_view questionFailure = "无法切换，请手动返回 QuillMoss";
inline constexpr std::string_view goAnswerText = "去回答";
inline constexpr std::string_view goAnswerToolTip = "仅切回 QuillMoss，不回答、翻页或提交";

} // namespace notch
