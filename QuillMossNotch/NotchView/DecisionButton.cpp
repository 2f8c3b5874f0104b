// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/DecisionButton.h"

#include <utility>

namespace notch {

DecisionButton::DecisionButton(
    AppModel& model, Decision decision, NotchActionStyle::Role role, QWidget* parent)
    : GuardedButton(role, parent)
    , model_(model)
    , decision_(decision)
{
}

void DecisionButton::setRequest(const std::string& requestID, bool armed)
{
    if (requestID_ != requestID || !armed)
        press_.reset();
    requestID_ = requestID;
    setEnabled(armed);
}

void DecisionButton::takePress(const std::optional<InputTime>& at)
{
    press_ = model_.press(requestID_, at);
}

void DecisionButton::usePress()
{
    if (const auto press = std::exchange(press_, std::nullopt))
        model_.release(*press, decision_);
}

} // namespace notch
