// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"
#include "SettingsView/ConfirmDialog.h"
#include "SettingsView/HookFlow.h"

#include <QWidget>

class QScrollArea;

namespace notch {

class SettingsView;

// The settings window's page, 600 points wide: the scrolling content and, below it, the footer that
// is always in sight. It owns the flows, which go on while the window is closed. Esc closes it.
class SettingsPage final : public QWidget, private ConfirmDialog {
public:
    // The model is borrowed and must outlive the page, and so must what the surroundings lend.
    SettingsPage(AppModel& model, const HookFlow::Surroundings& surroundings);
    ~SettingsPage() override;

    // Shows the present state; the delegate's layout pass calls it while the window is up.
    void refresh();
    // Reads anew what may have changed outside the program while nobody looked.
    void lookAgain() { flow_.appeared(); }

protected:
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;

private:
    bool hasLooked() const;
    void ask(const ConfirmQuestion& question, std::function<void(Answer)> answered) override;

    HookFlow flow_;
    SettingsView* view_;
    QScrollArea* area_;
    QWidget* unseenResult_ = nullptr; // The row of one that came while the window was closed.
};

} // namespace notch
