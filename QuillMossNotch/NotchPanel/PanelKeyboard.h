// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Platform/Display/KeyboardFocus.h"

#include <QEvent>
#include <QWidget>

namespace notch {

// Whether the panel has the keyboard. It is for whoever needs it there, and nobody loses what they
// type elsewhere:
//
//   press into a text       taken, and kept until giveBack()
//   press beside everything taken: Esc closes the notch
//   click on a control      not taken; given back at its end, unless the person has clicked into a
//                           text or typed in the panel
//
// Under XWayland nothing is taken; the panel has the keyboard if the compositor gives it to it.
// A press with the pointer leaves no control focused: rings are for those who use the keys.
// Main thread.
class PanelKeyboard {
public:
    // Borrowed; must outlive it, and its native window must have been created.
    explicit PanelKeyboard(QWidget& panel);

    // Of the panel's native window, before the widgets have it.
    void see(const QEvent& event);
    // To the window that had it. Nothing unless the panel has it.
    void giveBack();

private:
    enum class Ground { free, control, text };

    Ground groundAt(QPoint position) const;
    void pressed(const QMouseEvent& press);
    void released();

    QWidget& panel_;
    KeyboardFocus focus_;
    bool inUse_ = false; // The person has clicked into a text or typed in the panel.
    Ground pressedOn_ = Ground::free;
};

} // namespace notch
