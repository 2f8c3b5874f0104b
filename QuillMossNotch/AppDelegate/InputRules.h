// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"
#include "NotchPanel/NotchSurface.h"

#include <cstdint>
#include <functional>

namespace notch {

// What the delegate does with pointer and keyboard, before any view sees them. Main thread.
class InputRules {
public:
    enum class Event : std::uint8_t { other, pressInPanel, pressElsewhere, escapeKey };
    enum class Handling : std::uint8_t { passOn, swallow };

    // All are borrowed and must outlive it. `refreshHit` finds out anew what the pointer is on.
    InputRules(AppModel& model, NotchSurface& panel, std::function<void()> refreshHit);

    // In one of the program's own windows. Only Esc in the panel is kept from the views.
    Handling inApplication(Event event);
    // In another program's window.
    void systemWide(Event event);

private:
    AppModel& model_;
    NotchSurface& panel_;
    std::function<void()> refreshHit_;
};

} // namespace notch
