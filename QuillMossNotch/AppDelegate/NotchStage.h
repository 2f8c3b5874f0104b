// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppDelegate/DecisionWatch.h"
#include "AppModel/AppModel.h"
#include "Foundation/MainQueue.h"
#include "NotchPanel/HitRefresh.h"
#include "NotchPanel/LayoutPass.h"
#include "NotchPanel/NotchPanel.h"
#include "NotchPanel/Raising.h"
#include "NotchPanel/VerticalRevealAnimator.h"
#include "NotchView/NotchView.h"
#include "Platform/Display/Screens.h"
#include "Platform/SessionLock/SessionLock.h"

#include <functional>

namespace notch {

// The notch on the screen: the panel with its content, and what places and moves it. Main thread.
class NotchStage {
public:
    // What the stage asks of its owner.
    struct Requests {
        std::function<void()> scheduleLayout; // Coalesced, later.
        std::function<void()> layOut; // At once: the screens have changed.
    };

    // `dependencies` holds borrowed things, which must outlive the stage, and so must the model.
    NotchStage(AppModel& model, const AppModel::Dependencies& dependencies, Requests requests);

    NotchPanel& panel() { return panel_; }
    const NotchPanel& panel() const { return panel_; }
    // One pass; it may ask for another one.
    void layOut();
    void refreshHit() { hitRefresh_.run(); }
    // Both find out anew what the pointer is on.
    void orderFront();
    void orderOut();
    // Ends a running animation where it is.
    void stop() { animator_.stop(); }

private:
    void releaseWhenClosed();

    AppModel& model_;
    MainQueue& mainQueue_;
    NotchPanel panel_;
    NotchView& view_; // The panel's content.
    VerticalRevealAnimator animator_;
    Raising raising_;
    HitRefresh hitRefresh_;
    Screens screens_;
    LayoutPass layoutPass_;
    DecisionWatch decisionWatch_;
    SessionLock sessionLock_;
    bool open_ = true; // As of the last pass; the launch counts as a closing.
    DelayedWork release_;
};

} // namespace notch
