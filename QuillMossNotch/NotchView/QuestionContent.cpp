// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/QuestionContent.h"

#include "Style/VisibleText.h"

namespace notch {

QuestionContent::QuestionContent(const QuestionReminder& reminder)
    : question(visibleText(reminder.title, Lines::many))
    , page("第 " + std::to_string(reminder.currentPage) + " / "
           + std::to_string(reminder.totalPages) + " 页")
{
}

} // namespace notch
