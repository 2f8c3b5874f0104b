// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchPanel/HitRefresh.h"

#include "AppModel/AppModel.h"
#include "Geometry/PanelGeometry.h"

namespace notch {

HitRefresh::HitRefresh(
    AppModel& model, const NotchSurface& panel, const VerticalRevealAnimator& animator)
    : model_(model)
    , panel_(panel)
    , animator_(animator)
{
}

void HitRefresh::run()
{
    const bool inside = pointerOnSurface();
    if (inside != model_.state().interaction.pointerInside())
        model_.setPointerInside(inside);
}

bool HitRefresh::pointerOnSurface() const
{
    if (!panel_.isOnScreen())
        return false;
    const auto pointer = panel_.pointerPosition();
    return pointer && hitsSurface(*pointer, panel_.frame(), animator_.surfaceWidth());
}

} // namespace notch
