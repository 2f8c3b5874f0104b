// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"
#include "NotchView/GuardedButton.h"

#include <functional>
#include <optional>

namespace notch {

// A button that does something for one reminder. A click counts only when the same reminder was on
// show, and the button armed, from its press to its release.
class ReminderButton final : public GuardedButton {
public:
    // What a click does, with the token of the reminder that it is for.
    using Action = std::function<void(UUID)>;

    ReminderButton(
        const AppModel& model, NotchActionStyle::Role role, Action action, QWidget* parent);

    // The reminder on show, and whether this button may be pressed for it.
    void setReminder(UUID token, bool armed);

private:
    void takePress(const std::optional<InputTime>& at) override;
    void dropPress() override { pressed_.reset(); }
    void usePress() override;

    const AppModel& model_;
    Action action_;
    UUID token_;
    std::optional<UUID> pressed_; // The reminder that the person pressed it for.
};

} // namespace notch
