// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppDelegate/QuitEffects.h"

#include <QMessageBox>
#include <QPointer>

namespace notch {

// The question on the screen, in front and with the keyboard. Main thread.
class QuitAlert {
public:
    // `answered` runs once, later; never when the program ends before.
    void ask(const QuitQuestion& question, std::function<void(QuitEffects::Answer)> answered);
    // Nothing unless it asks.
    void bringForward();

private:
    QPointer<QMessageBox> box_; // While it asks; it deletes itself.
};

} // namespace notch
