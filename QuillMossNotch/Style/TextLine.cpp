// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Style/TextLine.h"

#include "Style/NotchStyle.h"
#include "Style/SymbolPath.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace notch {
namespace {

constexpr int symbolGap = 5;
constexpr int chipMargin = 8;
// More never fits into one line, and laying out a text of megabytes would take seconds.
constexpr int maxLaidOut = 600;
// Of a wrapped text: for two rows, and for any number.
constexpr int smallerSize = 13;
constexpr int smallestSize = 10;
constexpr int wrapping = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap | Qt::TextWrapAnywhere;

// Both of its ends, which is more than can be seen.
QString laidOut(const QString& text)
{
    if (text.size() <= maxLaidOut)
        return text;
    return text.left(maxLaidOut / 2) + QChar(0x2026) + text.right(maxLaidOut / 2);
}

int wrappedHeight(const QFont& font, int width, const QString& text)
{
    return QFontMetrics(font).boundingRect({0, 0, width, 0}, wrapping, text).height();
}

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

void TextLine::setWraps()
{
    wraps_ = true;
    auto policy = QSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

// The largest in which a wrapped text takes no more rows than its size may.
QFont TextLine::fontAt(int width) const
{
    auto font = this->font();
    if (!wraps_ || QFontMetrics(font).horizontalAdvance(text()) <= width)
        return font;
    font.setPixelSize(smallerSize);
    if (wrappedHeight(font, width, text()) > 2 * QFontMetrics(font).lineSpacing())
        font.setPixelSize(smallestSize);
    return font;
}

int TextLine::heightForWidth(int width) const
{
    const auto font = fontAt(width - textLeft());
    const int rows = wrappedHeight(font, width - textLeft(), text());
    return std::max(rows + 2, sizeHint().height());
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
    return {textLeft() + metrics.horizontalAdvance(laidOut(text())) + 1 + (chip_ ? chipMargin : 0),
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
    painter.setPen(colour_);
    paintText(painter, rect().adjusted(textLeft(), 0, chip_ ? -chipMargin : 0, 0));
}

void TextLine::paintText(QPainter& painter, const QRect& place) const
{
    const auto font = fontAt(place.width());
    painter.setFont(font);
    if (font != this->font()) {
        painter.drawText(place, wrapping, text());
        return;
    }
    const auto words = QFontMetrics(font).elidedText(laidOut(text()), elide_, place.width());
    painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, words);
}

} // namespace notch
