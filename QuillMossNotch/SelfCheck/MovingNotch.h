// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotchPanel/HitRefresh.h"
#include "NotchPanel/LayoutPass.h"
#include "NotchPanel/NotchViewport.h"
#include "NotchView/NotchView.h"
#include "Rehearsal/Scene.h"
#include "SelfCheck/FakeSurface.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace notch {

// A panel on no screen, with the real content in it.
class OffscreenPanel final : public FakeSurface {
public:
    OffscreenPanel(AppModel& model, const Clock& clock);

    void applyFrame(const Rect& frame, double surfaceWidth) override;
    double fitContent(double width, double maxHeight) override;

    NotchViewport& viewport() { return viewport_; }
    std::function<void()> frameApplied; // Not while it is empty.
    std::optional<double> contentHeight; // In place of the content's own.

private:
    NotchView* view_;
    NotchViewport viewport_;
};

// A scene whose notch is laid out and moves as on a desktop, on a screen of 1280 by 800. Its state
// is the panel's frame with the surface's width behind a slash, both as "…" while they move, and
// "all" for the height that the whole content needs; then whether the window is only as wide as the
// surface, the form of the content, and whether pointer and keyboard are in it.
//
//   layOut, open, wait 1 | 400,0 480xall/480 expanded
//   close, wait 0.1      | … expanded moving
//
// "layOut" is what happens at launch and when the screens change; "clickOn", "pressOn" and
// "releaseOn" are of a button, by its name, and do nothing where it is not there.
class MovingNotch final : public Scene {
public:
    MovingNotch();

    // By its name; null when it is not there.
    template <class Widget = QWidget> Widget* find(const char* name)
    {
        return panel.viewport().findChild<Widget*>(QLatin1String(name));
    }
    // It is on show and can be pressed.
    bool isArmed(const char* button);
    // It is on show, and so is all of each of its parts, on the surface.
    bool showsWhole(const char* section);

    OffscreenPanel panel{model, fakes.time};
    VerticalRevealAnimator animator{panel, fakes.time, fakes.time};

private:
    std::string stateText() override;
    void scheduleLayout();
    void addOperations();
    void click(const std::string& name);
    // The left button goes down or up in its middle.
    void point(const std::string& name, bool down);

    HitRefresh hit_{model, panel, animator};
    std::vector<ScreenRecord> screens_{{.frame = {0, 0, 1280, 800}}};
    bool reduced_ = false;
    bool layoutScheduled_ = false;
    int passes_ = 0;
    LayoutPass layout_{{
        .model = model,
        .panel = panel,
        .animator = animator,
        .screens = [this] { return screens_; },
        .reduceMotion = [this] { return reduced_; },
        .scheduleAnother = [this] { scheduleLayout(); },
        .refreshHit = [this] { hit_.run(); },
    }};
};

} // namespace notch
