// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/GuardedButton.h"

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

GuardedButton::GuardedButton(NotchActionStyle::Role role, QWidget* parent)
    : ActionButton(role, parent)
{
    setEnabled(false);
    connect(this, &QAbstractButton::pressed, this, [this] { beginPress(); });
    connect(this, &QAbstractButton::clicked, this, [this] { click(); });
}

Rect GuardedButton::onDesktop() const
{
    const auto corner = mapToGlobal(QPointF());
    return {corner.x(), corner.y(), static_cast<double>(width()), static_cast<double>(height())};
}

void GuardedButton::expectPress(quint64 timestamp)
{
    forgetPress();
    acted_ = InputTime{static_cast<std::uint32_t>(timestamp)};
}

void GuardedButton::beginPress()
{
    if (!std::exchange(held_, true))
        takePress(acted_);
}

void GuardedButton::click()
{
    held_ = false;
    usePress();
}

void GuardedButton::forgetPress()
{
    dropPress();
    held_ = false;
    acted_.reset();
}

void GuardedButton::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        expectPress(event->timestamp());
    ActionButton::mousePressEvent(event);
}

void GuardedButton::mouseReleaseEvent(QMouseEvent* event)
{
    ActionButton::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton)
        forgetPress();
}

void GuardedButton::keyPressEvent(QKeyEvent* event)
{
    if (isPressKey(*event))
        expectPress(event->timestamp());
    ActionButton::keyPressEvent(event);
}

void GuardedButton::keyReleaseEvent(QKeyEvent* event)
{
    ActionButton::keyReleaseEvent(event);
    if (isPressKey(*event))
        forgetPress();
}

void GuardedButton::hideEvent(QHideEvent* event)
{
    dropPress(); // The pointer may still be down; that press goes on and counts for nothing.
    ActionButton::hideEvent(event);
}

} // namespace notch
