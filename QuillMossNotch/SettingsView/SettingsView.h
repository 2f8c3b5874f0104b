// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"

#include <QWidget>

class QCheckBox;
class QLabel;
class QLayout;

namespace notch {

// The content of the settings window, 600 points wide: the switches, how the bridge stands, how to
// connect, and the way to quit. Reads the model and calls its operations.
class SettingsView final : public QWidget {
public:
    // The model is borrowed and must outlive the view.
    explicit SettingsView(AppModel& model, QWidget* parent = nullptr);
    ~SettingsView() override;

    // Shows the present state; the delegate's layout pass calls it while the window is up.
    void refresh();

private:
    QLayout* buildHeader();
    QWidget* buildInteraction();
    QWidget* buildConnection();
    QLayout* buildFooter();
    QCheckBox* buildSwitch(Preference preference, const char* text);

    AppModel& model_;
    QCheckBox* hoverToExpand_;
    QCheckBox* autoCollapse_;
    QLabel* bridge_;
    QLabel* editions_;
};

} // namespace notch
