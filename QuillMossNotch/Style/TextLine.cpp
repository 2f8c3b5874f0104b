// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Style/TextLine.h"

#include "Style/NotchStyle.h"
#include "Style/SymbolPath.h"

#include <QFontMetrics>
#include <QPainter>

namespace notch {
namespace {

constexpr int symbolGap = 5;
constexpr int chipMargin = 8;
// More never fits into one line, and laying out a text of megabytes would take seconds.
constexpr int maxLaidOut = 600;

int symbolSide(const QFont& font)
{
    return font.pixelSize() + 2;
}

} // namespace

TextLine::TextLine(const QFont& font, const QColor& colour, QWidget* parent)
    : QLabel(parent)
    , colour_(colour)
{
    setFont(font);
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void TextLine::setContent(Symbol symbol, std::string_view text)
{
    const auto words = toQString(text);
    if (symbol == symbol_ && words == this->text())
        return;
    symbol_ = symbol;
    setText(words);
    setAccessibleName(words);
    updateGeometry();
}

void TextLine::setColour(const QColor& colour)
{
    colour_ = colour;
    update();
}

void TextLine::setChip()
{
    chip_ = true;
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
}

int TextLine::textLeft() const
{
    const int left = chip_ ? chipMargin : 0;
    return symbol_ == Symbol::none ? left : left + symbolSide(font()) + symbolGap;
}

QSize TextLine::sizeHint() const
{
    const QFontMetrics metrics(font());
    const int height = font().pixelSize() + (chip_ ? 9 : 6);
    return {textLeft() + metrics.horizontalAdvance(text().left(maxLaidOut)) + 1
                + (chip_ ? chipMargin : 0),
        height};
}

void TextLine::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (chip_) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(style::white(0.1));
        painter.drawRoundedRect(rect(), height() / 2.0, height() / 2.0);
    }
    const double side = symbolSide(font());
    if (symbol_ != Symbol::none)
        paintSymbol(painter, {textLeft() - side - symbolGap, (height() - side) / 2, side, side},
            symbol_, colour_);
    const auto line = rect().adjusted(textLeft(), 0, chip_ ? -chipMargin : 0, 0);
    const auto words =
        QFontMetrics(font()).elidedText(text().left(maxLaidOut), elide_, line.width());
    painter.setPen(colour_);
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, words);
}

} // namespace notch
