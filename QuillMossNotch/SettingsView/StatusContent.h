// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"
#include "SettingsView/HookFlow.h"
#include "SettingsView/SectionContent.h"

#include <string_view>

namespace notch {

// What the settings show of the present state, a value a section.

struct AccessStatus {
    StatusLine line;
    bool canAsk = false; // The button that asks for access is there.

    explicit AccessStatus(const AppModelState& state);
};

struct TurnEndStatus {
    StatusLine line;
    std::string_view installText;
    bool buttonsEnabled = false;

    TurnEndStatus(const AppModelState& state, const HookFlowState& flow);
};

struct ConfigurationStatus {
    StatusLine line;
    bool warnsOfInterception = false;
    std::string_view installText;
    bool canInstall = false;

    explicit ConfigurationStatus(const HookFlowState& flow);
};

struct ResultStatus {
    StatusLine line; // The text is that of the flow's state. Empty: there is no result.
    bool hasBackup = false;

    explicit ResultStatus(const HookFlowState& flow);
};

} // namespace notch
