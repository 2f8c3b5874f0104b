// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/ReminderButton.h"

#include <utility>

namespace notch {

ReminderButton::ReminderButton(NotchActionStyle::Role role, Action action, QWidget* parent)
    : ActionButton(role, parent)
{
    setEnabled(false);
    connect(this, &QAbstractButton::pressed, this, [this] { pressed_ = token_; });
    connect(this, &QAbstractButton::clicked, this, [this, action = std::move(action)] {
        if (const auto pressed = std::exchange(pressed_, std::nullopt))
            action(*pressed);
    });
}

void ReminderButton::setReminder(UUID token, bool armed)
{
    if (token_ != token || !armed)
        pressed_.reset();
    token_ = token;
    setEnabled(armed);
}

void ReminderButton::hideEvent(QHideEvent* event)
{
    pressed_.reset(); // The pointer may still be down; that press counts for nothing any more.
    ActionButton::hideEvent(event);
}

} // namespace notch
