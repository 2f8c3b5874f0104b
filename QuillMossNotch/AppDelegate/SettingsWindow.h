// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"
#include "SettingsView/SettingsPage.h"

#include <optional>

namespace notch {

// The settings' window: made when it is first shown, kept from then on. Main thread.
class SettingsWindow {
public:
    // The model is borrowed and must outlive it, and so must what the surroundings lend.
    SettingsWindow(AppModel& model, HookFlow::Surroundings surroundings);

    // Brings it to the front with the keyboard.
    void show();
    // Shows the model's present state, if the window is on the screen.
    void refresh();

private:
    void build();

    AppModel& model_;
    HookFlow::Surroundings surroundings_;
    std::optional<SettingsPage> page_;
};

} // namespace notch
