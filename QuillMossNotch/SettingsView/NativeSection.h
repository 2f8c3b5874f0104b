// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "SettingsView/SettingsSection.h"

namespace notch {

class SymbolLabel;

// Cards and questions of the host's own window, and the access that reading them needs.
class NativeSection final : public SettingsSection {
public:
    explicit NativeSection(AppModel& model);

    void refresh() override;

private:
    SymbolLabel* status_;
    QPushButton* ask_;
};

} // namespace notch
