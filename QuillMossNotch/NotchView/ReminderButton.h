// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/UUID.h"
#include "Style/ActionButton.h"

#include <functional>
#include <optional>

namespace notch {

// A button that does something for one reminder. A click counts only when the same reminder was on
// show, and the button armed, from its press to its release.
class ReminderButton final : public ActionButton {
public:
    // What a click does, with the token of the reminder that it is for.
    using Action = std::function<void(UUID)>;

    ReminderButton(NotchActionStyle::Role role, Action action, QWidget* parent);

    // The reminder on show, and whether this button may be pressed for it.
    void setReminder(UUID token, bool armed);

protected:
    void hideEvent(QHideEvent* event) override;

private:
    UUID token_;
    std::optional<UUID> pressed_; // The reminder that the person pressed it for.
};

} // namespace notch
