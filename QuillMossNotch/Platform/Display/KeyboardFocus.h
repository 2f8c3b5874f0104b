// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QWindow>

namespace notch {

// The keyboard for a window that no window manager gives it to. Whoever had it gets it back.
// Nothing happens without an X server, nor under XWayland: there the compositor alone gives it.
// Main thread.
class KeyboardFocus {
public:
    // Borrowed; must outlive it and have been created.
    explicit KeyboardFocus(QWindow& window);

    // `time`: the X server's, of the event that is the reason.
    void take(quint32 time);
    // Only while the window still has it: what another window took since stays there.
    void giveBack();

private:
    QWindow& window_;
    quint32 previous_ = 0;
};

} // namespace notch
