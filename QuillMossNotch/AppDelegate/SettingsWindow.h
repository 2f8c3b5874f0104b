// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"
#include "SettingsView/SettingsView.h"

#include <optional>

namespace notch {

// The settings' window: made when it is first shown, kept from then on. Main thread.
class SettingsWindow {
public:
    // The model is borrowed and must outlive it.
    explicit SettingsWindow(AppModel& model);

    // Brings it to the front with the keyboard.
    void show();
    // Shows the model's present state, if anybody can see it.
    void refresh();

private:
    void build();

    AppModel& model_;
    std::optional<SettingsView> view_;
};

} // namespace notch
