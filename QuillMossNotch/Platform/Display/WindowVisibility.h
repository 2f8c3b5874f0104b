// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Geometry/NotchShape.h"

#include <QAbstractNativeEventFilter>
#include <QRegion>
#include <QWindow>

#include <cstdint>
#include <functional>

namespace notch {

// How much of one of our windows the windows of other programs leave in sight, read from the order
// and the places of the root's children: under a compositor the server itself counts every window
// as visible. It counts whatever lies above, also what is translucent there, and leaves out our own
// menus and tool tips.
//
// Every change on the desktop wakes this process while it is being watched, so that is asked for
// only while it matters. Each change is looked at before any later event is handled: a click that
// follows on the closing of a covering window finds `uncovered` told already.
//
// Nothing is ever told without an X server. Main thread.
class WindowVisibility final : private QAbstractNativeEventFilter {
public:
    struct Changes {
        std::function<void()> hidden; // The greater part has come under other windows.
        std::function<void()> uncovered; // A part that another window hid is in sight again.
    };
    enum class Watch : std::uint8_t { off, on };

    // The window is borrowed, must outlive this object and have been created.
    WindowVisibility(QWindow& window, Changes changes);
    ~WindowVisibility() override;
    Q_DISABLE_COPY_MOVE(WindowVisibility)

    // What matters of the window, in its own pixels. Nothing does until this is set.
    void setArea(const PixelRect& area);
    // What is hidden when the watch begins is told at once.
    void set(Watch watch);
    // The greater part is under other windows, as far as it is being watched.
    bool isHidden() const;

private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
    void inspect();

    QWindow& window_;
    Changes changes_;
    PixelRect area_;
    Watch watch_ = Watch::off;
    QRegion covered_; // A part of the area; empty while the watch is off.
};

} // namespace notch
