// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"
#include "SettingsView/HookFlow.h"

#include <QWidget>

#include <vector>

class QLayout;

namespace notch {

class ResultRow;
class SettingsSection;

// The scrolling content of the settings window: what the notch is, the sections, and the result of
// the last change. Reads the model and the flow and calls their operations.
class SettingsView final : public QWidget {
public:
    // Both are borrowed and must outlive the view.
    SettingsView(AppModel& model, HookFlow& flow);

    // Shows the present state. The row of a new result, so that it can be brought into sight; null
    // when there is none.
    QWidget* refresh();

private:
    QLayout* buildHeader();

    AppModel& model_;
    std::vector<SettingsSection*> sections_;
    ResultRow* result_;
};

} // namespace notch
