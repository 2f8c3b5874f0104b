// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"

#include <QWidget>

class QLabel;

namespace notch {

class ReminderButton;
class TextBlock;
class TextLine;

// A question that the host waits on, and the way to the host. It answers nothing.
class QuestionSection final : public QWidget {
public:
    QuestionSection(AppModel& model, QWidget* parent);

    // Only while a question is visible.
    void present(const AppModelState& state);
    // What it offers, as it shows it.
    ShownDecision decision() const;

private:
    UUID token_; // Of the question on show.
    TextLine* title_;
    TextBlock* question_;
    TextLine* page_;
    QLabel* note_;
    TextLine* failure_;
    ReminderButton* goAnswer_;
};

} // namespace notch
