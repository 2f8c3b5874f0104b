// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "SettingsView/ConfirmDialog.h"

#include <QDialog>

namespace notch {

// The dialog before a change of the host's file. It blocks its parent's window and no other, so
// that the notch can be answered meanwhile. Nothing but a press on the first button confirms, and
// the keyboard begins on the other one: a key that was meant for the window below changes nothing.
class ConfirmBox final : public QDialog {
public:
    ConfirmBox(const ConfirmQuestion& question, QWidget* parent);

private:
    QWidget* preview(const std::string& text);
    QWidget* buttons(const ConfirmQuestion& question);
};

} // namespace notch
