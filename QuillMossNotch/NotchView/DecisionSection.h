// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"
#include "NotchView/ApprovalContent.h"

#include <QWidget>

#include <array>
#include <optional>

namespace notch {

class ActionButton;
class DecisionButton;
class TextLine;

// The time left, the two buttons that decide, and the way to the host.
class DecisionSection final : public QWidget {
public:
    DecisionSection(AppModel& model, QWidget* parent);

    void setContent(const ApprovalContent& content);
    void present(const ApprovalRequest& request, bool armed);
    void showTime(const std::optional<TimeLine>& line);
    // Where its buttons are on the desktop.
    std::array<Rect, 2> buttons() const;

private:
    QLayout* buildTime();
    QLayout* buildButtons();
    QLayout* buildFooter();

    AppModel& model_;
    std::string source_; // Of the request on show.
    TextLine* time_;
    TextLine* timeNote_;
    DecisionButton* negative_;
    DecisionButton* positive_;
    TextLine* onlyThis_;
    ActionButton* toHost_;
};

} // namespace notch
