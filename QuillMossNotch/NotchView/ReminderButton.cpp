// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/ReminderButton.h"

#include <utility>

namespace notch {

ReminderButton::ReminderButton(
    const AppModel& model, NotchActionStyle::Role role, Action action, QWidget* parent)
    : GuardedButton(role, parent)
    , model_(model)
    , action_(std::move(action))
{
}

void ReminderButton::setReminder(UUID token, bool armed)
{
    if (token_ != token || !armed)
        pressed_.reset();
    token_ = token;
    setEnabled(armed);
}

void ReminderButton::takePress(const std::optional<InputTime>& at)
{
    if (model_.mayPress(token_, at))
        pressed_ = token_;
}

void ReminderButton::usePress()
{
    if (const auto pressed = std::exchange(pressed_, std::nullopt))
        action_(*pressed);
}

} // namespace notch
