// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"
#include "NotchView/IdleContent.h"

#include <QWidget>

class QLabel;

namespace notch {

class ActionButton;
class TextLine;

// The open notch while nothing waits: the state of the service, and the next step.
class IdleSection final : public QWidget {
public:
    IdleSection(AppModel& model, QWidget* parent);

    void present(const IdleContent& content);

private:
    QLayout* buildStatus();
    QLayout* buildButtons();
    void actionClicked();

    AppModel& model_;
    IdleContent::Action action_{};
    TextLine* title_;
    QLabel* note_;
    TextLine* status_;
    TextLine* completion_;
    TextLine* native_;
    ActionButton* main_;
    ActionButton* demo_;
};

} // namespace notch
