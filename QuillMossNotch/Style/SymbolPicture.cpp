// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Style/SymbolPicture.h"

#include "Style/SymbolPath.h"

#include <QPainter>

namespace notch {

SymbolPicture::SymbolPicture(int side, QWidget* parent)
    : QWidget(parent)
{
    setFixedSize(side, side);
}

void SymbolPicture::setSymbol(Symbol symbol, const QColor& colour)
{
    symbol_ = symbol;
    colour_ = colour;
    update();
}

void SymbolPicture::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    paintSymbol(painter, rect(), symbol_, colour_);
}

} // namespace notch
