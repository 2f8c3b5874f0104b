// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"
#include "NotchView/ApprovalContent.h"

#include <QWidget>

#include <optional>

namespace notch {

class ActionButton;
class DecisionSection;
class YieldingArea;
class SwitcherSection;
class TextBlock;
class TextLine;

// A request that waits: what it is, where it comes from, its whole text, and the decision.
class ApprovalSection final : public QWidget {
public:
    ApprovalSection(AppModel& model, const Clock& clock, QWidget* parent);

    // Only while a request waits.
    void present(const AppModelState& state);
    // Gives way by so many points at this width, if it can: its texts scroll then. Each measuring
    // begins with none.
    void shrink(int width, int points);
    // The seconds left, now; when they will read differently, if they will.
    std::optional<Seconds> showTime();
    // Once a request has been shown.
    ShownDecision decision() const;

private:
    QLayout* buildRequest();
    QLayout* buildTitle();
    QLayout* buildOrigin();
    QLayout* buildDetailsHeader();
    QLayout* buildDetailsBar();
    void showRequest(const ApprovalRequest& request);
    void showDetails(const AppModelState& state);
    void copyClicked();
    void rewind();

    AppModel& model_;
    const Clock& clock_;
    std::optional<ApprovalRequest> request_; // On show.
    bool open_ = false; // The notch was, when the request was last presented.
    QWidget* told_; // What is asked, above the decision.
    TextLine* banner_;
    TextLine* title_;
    TextLine* chip_;
    TextLine* origin_;
    TextLine* source_;
    TextBlock* description_;
    TextLine* detailsHeader_;
    TextLine* detailsChip_;
    TextBlock* command_;
    TextBlock* parameters_;
    ActionButton* toggle_;
    ActionButton* copy_;
    YieldingArea* toldArea_; // Holds it.
    DecisionSection* decision_;
    SwitcherSection* switcher_;
};

} // namespace notch
