// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppDelegate/InputRules.h"

#include <utility>

namespace notch {

InputRules::InputRules(AppModel& model, NotchSurface& panel, std::function<void()> refreshHit)
    : model_(model)
    , panel_(panel)
    , refreshHit_(std::move(refreshHit))
{
}

InputRules::Handling InputRules::inApplication(Event event)
{
    if (event == Event::escapeKey && panel_.isKeyWindow()) {
        model_.collapse();
        panel_.resignKeyWindow();
        return Handling::swallow;
    }
    systemWide(event);
    return Handling::passOn;
}

void InputRules::systemWide(Event event)
{
    // First: a press beside the surface must not count as outside while the pointer is said to be
    // inside still, nor the other way round.
    refreshHit_();
    if (event == Event::pressElsewhere)
        model_.handleOutsideInteraction();
}

} // namespace notch
