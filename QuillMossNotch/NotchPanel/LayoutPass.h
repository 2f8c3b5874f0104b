// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Geometry/PanelGeometry.h"
#include "NotchPanel/NotchSurface.h"
#include "NotchPanel/VerticalRevealAnimator.h"

#include <functional>
#include <vector>

namespace notch {

class AppModel;

// Gives the panel its place and size: chooses the screen, hands the model the widths, measures the
// content and sends the frame to the animator. Whatever the content must first be laid out for ends
// the pass and asks for another one, so that no frame is ever applied with stale widths.
//
//   delegate: model changed -> coalesced -> run(), then the status item's tool tip
//   delegate: screens changed -> run()
//
// Main thread.
class LayoutPass {
public:
    // All that is borrowed must outlive the pass.
    struct Surroundings {
        AppModel& model;
        NotchSurface& panel;
        VerticalRevealAnimator& animator;
        std::function<std::vector<ScreenRecord>()> screens;
        std::function<bool()> reduceMotion; // The desktop's setting.
        std::function<void()> scheduleAnother; // Coalesced, later.
        std::function<void()> refreshHit;
    };

    explicit LayoutPass(Surroundings surroundings);

    void run();

private:
    bool publishWidths(const PanelMetrics& metrics);
    bool presentExpansion();
    void moveTo(const ScreenRecord& screen, const PanelMetrics& metrics);
    void reached(bool collapsed);

    Surroundings around_;
    double renderedNotchHeight_ = -1;
};

} // namespace notch
