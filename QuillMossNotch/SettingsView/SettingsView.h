// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"
#include "AppModel/Preferences.h"

#include <QWidget>

namespace notch {

// The content of the settings window, 600 points wide: what is connected, how to connect, the
// switches, and the way to quit. Reads the model and the preferences; writes preferences only.
class SettingsView final : public QWidget {
public:
    SettingsView(AppModel& model, Preferences& preferences, QWidget* parent = nullptr);
    ~SettingsView() override;

    // Shows the model's present state; the delegate's layout pass calls it while the window is up.
    void refresh();
};

} // namespace notch
