// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "SettingsView/HookFlow.h"
#include "SettingsView/SettingsSection.h"

class QComboBox;
class QLineEdit;

namespace notch {

class SymbolLabel;

// The approval hook in the file of one edition: its state, and the buttons that install and remove
// it.
class ConfigurationSection final : public SettingsSection {
public:
    // Both are borrowed.
    ConfigurationSection(AppModel& model, HookFlow& flow);

    void refresh() override;

private:
    void addPicker();
    void addStatus();
    void addHint();
    void addActions();

    HookFlow& flow_;
    QComboBox* picker_;
    QLineEdit* path_;
    SymbolLabel* status_;
    SymbolLabel* detail_;
    SymbolLabel* warning_;
    QPushButton* install_;
};

} // namespace notch
