// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Style/PlainLabel.h"

#include <QLabel>

namespace notch {

QLabel* plainLabel(const QFont& font, const QColor& colour, QWidget* parent)
{
    auto* const label = new QLabel(parent);
    label->setFont(font);
    label->setTextFormat(Qt::PlainText);
    auto colours = label->palette();
    colours.setColor(QPalette::WindowText, colour);
    label->setPalette(colours);
    return label;
}

} // namespace notch
