// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/DecisionButton.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include <utility>

namespace notch {
namespace {

// A key that presses buttons, going down or up in truth: a key that is held repeats itself.
bool isPressKey(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Space:
    case Qt::Key_Select:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return !event.isAutoRepeat();
    }
    return false;
}

} // namespace

DecisionButton::DecisionButton(
    AppModel& model, Decision decision, NotchActionStyle::Role role, QWidget* parent)
    : ActionButton(role, parent)
    , model_(model)
    , decision_(decision)
{
    setEnabled(false);
    connect(this, &QAbstractButton::pressed, this, [this] { beginPress(); });
    connect(this, &QAbstractButton::clicked, this, [this] { click(); });
}

void DecisionButton::setRequest(const std::string& requestID, bool armed)
{
    if (requestID_ != requestID)
        press_.reset();
    requestID_ = requestID;
    if (!armed)
        press_.reset();
    setEnabled(armed);
}

void DecisionButton::expectPress(quint64 timestamp)
{
    forgetPress();
    acted_ = InputTime{static_cast<std::uint32_t>(timestamp)};
}

void DecisionButton::beginPress()
{
    if (!std::exchange(held_, true))
        press_ = model_.press(requestID_, acted_);
}

void DecisionButton::click()
{
    const auto press = std::exchange(press_, std::nullopt);
    held_ = false;
    if (press)
        model_.release(*press, decision_);
}

void DecisionButton::forgetPress()
{
    press_.reset();
    held_ = false;
    acted_.reset();
}

void DecisionButton::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        expectPress(event->timestamp());
    ActionButton::mousePressEvent(event);
}

void DecisionButton::mouseReleaseEvent(QMouseEvent* event)
{
    ActionButton::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton)
        forgetPress();
}

void DecisionButton::keyPressEvent(QKeyEvent* event)
{
    if (isPressKey(*event))
        expectPress(event->timestamp());
    ActionButton::keyPressEvent(event);
}

void DecisionButton::keyReleaseEvent(QKeyEvent* event)
{
    ActionButton::keyReleaseEvent(event);
    if (isPressKey(*event))
        forgetPress();
}

void DecisionButton::hideEvent(QHideEvent* event)
{
    press_.reset(); // The pointer may still be down; that press goes on and counts for nothing.
    ActionButton::hideEvent(event);
}

} // namespace notch
