// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/CompactButton.h"

#include "Geometry/PanelGeometry.h"
#include "NotchView/CompactContent.h"
#include "Style/NotchStyle.h"
#include "Style/SymbolPath.h"

#include <QPainter>

#include <cmath>

namespace notch {
namespace {

constexpr double dotSide = 5;
constexpr double symbolSide = 11;
constexpr double gap = 6;

} // namespace

CompactButton::CompactButton(QWidget* parent)
    : QAbstractButton(parent)
{
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setFont(style::font(11, QFont::Medium));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void CompactButton::present(const CompactContent& content)
{
    attention_ = content.attention;
    symbol_ = content.symbol;
    setText(toQString(content.text));
    setAccessibleName(toQString(content.label));
    setPlainToolTip(*this, content.toolTip);
    update();
}

void CompactButton::setMetrics(double compactWidth, double notchHeight)
{
    size_ = QSizeF(compactWidth, notchHeight + compactTextHeight).toSize();
    setFixedSize(size_);
}

void CompactButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double words = QFontMetricsF(font()).horizontalAdvance(text());
    const double width = dotSide + gap + words + gap + symbolSide;
    const double middle = height() - compactTextHeight / 2 - 1;
    double x = (this->width() - width) / 2;

    painter.setPen(Qt::NoPen);
    painter.setBrush(attention_ ? style::warning : style::accent);
    painter.drawEllipse(QRectF(x, middle - dotSide / 2, dotSide, dotSide));
    x += dotSide + gap;
    painter.setPen(style::white(underMouse() || hasFocus() ? 1 : 0.86));
    painter.drawText(QRectF(x, middle - compactTextHeight / 2, words + 2, compactTextHeight),
        Qt::AlignLeft | Qt::AlignVCenter, text());
    x += words + gap;
    paintSymbol(painter, {x, middle - symbolSide / 2, symbolSide, symbolSide}, symbol_,
        style::white(underMouse() ? 0.9 : 0.6));
    if (hasFocus())
        style::paintFocusRing(
            painter, QRectF((this->width() - width) / 2 - 8, middle - 10, width + 16, 20), 10);
}

} // namespace notch
