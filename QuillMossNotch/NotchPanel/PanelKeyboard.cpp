// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchPanel/PanelKeyboard.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QMouseEvent>

namespace notch {

namespace {

bool isControl(const QWidget& widget)
{
    return widget.focusPolicy() == Qt::TabFocus || qobject_cast<const QAbstractButton*>(&widget)
        || qobject_cast<const QAbstractSlider*>(&widget);
}

} // namespace

PanelKeyboard::PanelKeyboard(QWidget& panel)
    : panel_(panel)
    , focus_(*panel.windowHandle())
{
    // Otherwise the toolkit gives the focus to the first control whenever the panel becomes active.
    panel_.setFocusPolicy(Qt::ClickFocus);
    panel_.setFocus();
}

void PanelKeyboard::see(const QEvent& event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
        pressed(static_cast<const QMouseEvent&>(event));
        break;
    case QEvent::MouseButtonRelease:
        released();
        break;
    case QEvent::KeyPress:
        inUse_ = true;
        break;
    default:
        break;
    }
}

void PanelKeyboard::giveBack()
{
    inUse_ = false;
    panel_.setFocus();
    focus_.giveBack();
}

// What a click may focus is a text.
PanelKeyboard::Ground PanelKeyboard::groundAt(QPoint position) const
{
    for (const auto* at = panel_.childAt(position); at && at != &panel_; at = at->parentWidget()) {
        if (isControl(*at))
            return Ground::control;
        if ((at->focusPolicy() & Qt::ClickFocus) != 0)
            return Ground::text;
    }
    return Ground::free;
}

void PanelKeyboard::pressed(const QMouseEvent& press)
{
    pressedOn_ = groundAt(press.position().toPoint());
    if (pressedOn_ == Ground::control) {
        panel_.setFocus();
        return;
    }
    if (!panel_.isActiveWindow())
        inUse_ = false;
    inUse_ = inUse_ || pressedOn_ == Ground::text;
    focus_.take(static_cast<quint32>(press.timestamp()));
}

void PanelKeyboard::released()
{
    if (pressedOn_ == Ground::control && !inUse_ && panel_.isActiveWindow())
        giveBack();
}

} // namespace notch
