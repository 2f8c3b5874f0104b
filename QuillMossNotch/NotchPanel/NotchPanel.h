// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotchPanel/NotchSurface.h"
#include "NotchPanel/NotchViewport.h"
#include "NotchPanel/PanelKeyboard.h"
#include "Platform/Display/SelectionWatch.h"
#include "Platform/Display/WindowVisibility.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

namespace notch {

// The window of the notch. It
//  - lies above everything, a focused full-screen window included, and no window manager moves it;
//  - takes no keyboard when it appears, and later only as PanelKeyboard says; resigning gives it
//    back to the window that had it;
//  - is there for the pointer only where the surface is drawn: every other click reaches the window
//    below. Wayland compositors know of no shape but the window's rectangle, so that this one is no
//    wider than the surface where that is closed and at rest;
//  - has smooth edges under a compositor and hard ones without, and follows when one comes or goes.
//
//   panel.setContentView(...);  layoutPass.run();  panel.orderFront();
//
// Main thread.
class NotchPanel final : public QWidget, public NotchSurface {
public:
    NotchPanel();
    ~NotchPanel() override;
    Q_DISABLE_COPY_MOVE(NotchPanel)

    // Once, before the first frame.
    void setContentView(std::unique_ptr<NotchViewport> viewport);
    NotchViewport& viewport() const { return *viewport_; }

    // Shows it on top, without taking the keyboard.
    void orderFront();
    // Gives the keyboard back and hides it.
    void orderOut();

    // Run only while the cover is watched, as WindowVisibility says.
    std::function<void()> surfaceHidden;
    std::function<void()> surfaceUncovered;

    // The greater part of the surface is under other windows, as far as that is watched.
    bool isCovered() const { return visibility_->isHidden(); }

    Rect frame() const override { return frame_; }
    void setRoom(Room room) override;
    void applyFrame(const Rect& frame, double surfaceWidth) override;
    double fitContent(double width, double maxHeight) override;
    bool isOnScreen() const override;
    void bringToFront() override;
    void watchCover(bool watched) override;
    bool isKeyWindow() const override;
    void resignKeyWindow() override;
    std::optional<Point> pointerPosition() const override;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void place();
    void applyShape();

    NotchViewport* viewport_ = nullptr; // A child; null until it is set.
    Room room_ = Room::frame;
    Rect frame_;
    SelectionWatch compositor_;
    // From the native window's creation on:
    std::optional<PanelKeyboard> keyboard_;
    std::optional<WindowVisibility> visibility_;
};

} // namespace notch
