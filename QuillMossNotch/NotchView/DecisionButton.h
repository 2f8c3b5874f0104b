// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"
#include "Style/ActionButton.h"

#include <optional>
#include <string>

namespace notch {

// A button that decides a request. A click counts only when its press and its release fall in the
// same armed time of the same request, and it makes no difference which device they come from: a
// pointer, a finger, a key, a screen reader's action.
//
// A press is taken once, when it begins. The base class reports another one when a pointer that is
// held down leaves the button and comes back; that one may lie in a later armed time and is not a
// press that the person made for it.
class DecisionButton final : public ActionButton {
public:
    DecisionButton(
        AppModel& model, Decision decision, NotchActionStyle::Role role, QWidget* parent);

    // The request on show, and whether its buttons are armed.
    void setRequest(const std::string& requestID, bool armed);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void expectPress(quint64 timestamp);
    void beginPress();
    void click();
    void forgetPress();

    AppModel& model_;
    Decision decision_;
    std::string requestID_;
    std::optional<InputTime> acted_; // When the press was made; nothing by a screen reader.
    bool held_ = false; // A press has begun and not ended.
    std::optional<AppModel::ArmedPress> press_; // Nothing when it began unarmed.
};

} // namespace notch
