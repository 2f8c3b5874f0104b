// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotchPanel/NotchSurface.h"
#include "NotchPanel/VerticalRevealAnimator.h"

namespace notch {

class AppModel;

// Tells the model whether the pointer is on the drawn surface. That clicks beside it reach the
// window below needs no telling: the panel's input region has the surface's outline at all times.
class HitRefresh {
public:
    // All must outlive it.
    HitRefresh(AppModel& model, const NotchSurface& panel, const VerticalRevealAnimator& animator);

    void run();

private:
    bool pointerOnSurface() const;

    AppModel& model_;
    const NotchSurface& panel_;
    const VerticalRevealAnimator& animator_;
};

} // namespace notch
