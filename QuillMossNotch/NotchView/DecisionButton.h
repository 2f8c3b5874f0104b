// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"
#include "NotchView/GuardedButton.h"

#include <optional>
#include <string>

namespace notch {

// A button that decides a request. A click counts only when its press and its release fall in the
// same armed time of the same request.
class DecisionButton final : public GuardedButton {
public:
    DecisionButton(
        AppModel& model, Decision decision, NotchActionStyle::Role role, QWidget* parent);

    // The request on show, and whether its buttons are armed.
    void setRequest(const std::string& requestID, bool armed);

private:
    void takePress(const std::optional<InputTime>& at) override;
    void dropPress() override { press_.reset(); }
    void usePress() override;

    AppModel& model_;
    Decision decision_;
    std::string requestID_;
    std::optional<AppModel::ArmedPress> press_; // Nothing when it began unarmed.
};

} // namespace notch
