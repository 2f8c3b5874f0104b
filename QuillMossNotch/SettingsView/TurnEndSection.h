// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "SettingsView/HookFlow.h"
#include "SettingsView/SettingsSection.h"

namespace notch {

class SymbolLabel;

// Reminders of a turn's end, and the hooks that report it.
class TurnEndSection final : public SettingsSection {
public:
    // Both are borrowed.
    TurnEndSection(AppModel& model, HookFlow& flow);

    void refresh() override;

private:
    HookFlow& flow_;
    SymbolLabel* status_;
    QPushButton* install_;
    QPushButton* remove_;
};

} // namespace notch
