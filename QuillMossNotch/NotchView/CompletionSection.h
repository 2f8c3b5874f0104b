// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"

#include <QWidget>

class QLabel;
class QLayout;

namespace notch {

class ReminderButton;
class TextLine;

// A turn that ended in the background: the person takes note, or goes to the host.
class CompletionSection final : public QWidget {
public:
    CompletionSection(AppModel& model, QWidget* parent);

    // Only while there is such a reminder.
    void present(const AppModelState& state);
    // What it offers, as it shows it.
    ShownDecision decision() const;

private:
    QLayout* buildTitle();
    QLayout* buildButtons();

    UUID token_; // Of the reminder on show.
    TextLine* title_;
    QLabel* note_;
    TextLine* failure_;
    ReminderButton* dismiss_;
    ReminderButton* open_;
};

} // namespace notch
