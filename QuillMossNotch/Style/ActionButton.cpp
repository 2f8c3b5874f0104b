// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Style/ActionButton.h"

#include "Style/NotchStyle.h"

#include <QPainter>

namespace notch {

ActionButton::ActionButton(NotchActionStyle::Role role, QWidget* parent)
    : QAbstractButton(parent)
    , look_{.role = role}
{
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ActionButton::setContent(Symbol symbol, std::string_view text)
{
    const auto words = toQString(text);
    if (symbol == symbol_ && words == this->text())
        return;
    symbol_ = symbol;
    setText(words);
    setAccessibleName(words);
    updateGeometry();
    update();
}

void ActionButton::setCompact()
{
    look_.compact = true;
    updateGeometry();
}

void ActionButton::paintEvent(QPaintEvent*)
{
    auto look = look_;
    look.enabled = isEnabled();
    look.hovered = underMouse() && isEnabled();
    look.pressed = isDown();
    look.focused = hasFocus();
    QPainter painter(this);
    look.paint(painter, rect(), symbol_, text());
}

} // namespace notch
