// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Style/IconButton.h"

#include "Style/NotchStyle.h"

#include <QPainter>

namespace notch {

IconButton::IconButton(Symbol symbol, QWidget* parent)
    : QAbstractButton(parent)
    , symbol_(symbol)
{
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setFixedSize(NotchIconStyle::side, NotchIconStyle::side);
}

void IconButton::setContent(Symbol symbol, std::string_view label, std::string_view toolTip)
{
    symbol_ = symbol;
    setAccessibleName(toQString(label));
    setPlainToolTip(*this, toolTip.empty() ? label : toolTip);
    update();
}

void IconButton::paintEvent(QPaintEvent*)
{
    const NotchIconStyle look{.hovered = underMouse(), .pressed = isDown(), .focused = hasFocus()};
    QPainter painter(this);
    look.paint(painter, rect(), symbol_);
}

} // namespace notch
