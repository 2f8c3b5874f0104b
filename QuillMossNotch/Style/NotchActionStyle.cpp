// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Style/NotchActionStyle.h"

#include "Style/NotchStyle.h"
#include "Style/SymbolPath.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace notch {
namespace {

constexpr double symbolGap = 6;
constexpr double pressedScale = 0.975;
constexpr double iconSide = 15;

double symbolSide(const NotchActionStyle& look)
{
    return look.compact ? 10 : 13;
}

QFont fontOf(const NotchActionStyle& look)
{
    if (look.role == NotchActionStyle::Role::plain || look.compact)
        return style::font(11, QFont::Medium);
    return style::font(13, QFont::DemiBold);
}

double radiusOf(const NotchActionStyle& look)
{
    return look.compact ? 7 : 11;
}

QColor fillOf(const NotchActionStyle& look)
{
    switch (look.role) {
    case NotchActionStyle::Role::plain:
        return style::white(look.hovered ? 0.08 : 0);
    case NotchActionStyle::Role::primary:
        if (!look.enabled)
            return style::white(0.08);
        if (look.pressed)
            return style::accent.darker(118);
        return look.hovered ? style::accent.lighter(106) : style::accent;
    case NotchActionStyle::Role::secondary:
        break;
    }
    if (!look.enabled)
        return style::white(0.06);
    return style::white(look.pressed ? 0.1 : look.hovered ? 0.2 : 0.14);
}

QColor inkOf(const NotchActionStyle& look)
{
    if (!look.enabled)
        return style::white(0.32);
    if (look.role == NotchActionStyle::Role::primary)
        return style::onAccent;
    const bool quiet = look.role == NotchActionStyle::Role::plain && !look.hovered;
    return style::white(quiet ? 0.72 : 0.94);
}

void shrink(QPainter& painter, const QRectF& rectangle)
{
    painter.translate(rectangle.center());
    painter.scale(pressedScale, pressedScale);
    painter.translate(-rectangle.center());
}

} // namespace

QSize NotchActionStyle::sizeFor(Symbol symbol, const QString& text) const
{
    const double words = QFontMetricsF(fontOf(*this)).horizontalAdvance(text);
    const double picture = symbol == Symbol::none ? 0 : symbolSide(*this) + symbolGap;
    const double margin = role == Role::plain || compact ? 8 : 16;
    const int height = role == Role::plain || compact ? 24 : 38;
    return {static_cast<int>(std::ceil(words + picture + 2 * margin)), height};
}

void NotchActionStyle::paint(
    QPainter& painter, const QRectF& rectangle, Symbol symbol, const QString& text) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (pressed && enabled && !reducesMotion)
        shrink(painter, rectangle);
    QPainterPath body;
    body.addRoundedRect(rectangle, radiusOf(*this), radiusOf(*this));
    painter.fillPath(body, fillOf(*this));
    if (focused)
        style::paintFocusRing(painter, rectangle, radiusOf(*this) - 1);

    const auto ink = inkOf(*this);
    const double picture = symbol == Symbol::none ? 0 : symbolSide(*this) + symbolGap;
    const QFontMetricsF metrics(fontOf(*this));
    const auto shown = metrics.elidedText(text, Qt::ElideRight, rectangle.width() - picture - 8);
    const double width = metrics.horizontalAdvance(shown) + picture;
    QRectF line(rectangle.center().x() - width / 2, rectangle.top(), width, rectangle.height());
    if (symbol != Symbol::none) {
        const double side = symbolSide(*this);
        paintSymbol(painter, {line.left(), line.center().y() - side / 2, side, side}, symbol, ink);
    }
    line.setLeft(line.left() + picture);
    painter.setFont(fontOf(*this));
    painter.setPen(ink);
    painter.drawText(line.adjusted(0, 0, 2, 0), Qt::AlignLeft | Qt::AlignVCenter, shown);
    painter.restore();
}

void NotchIconStyle::paint(QPainter& painter, const QRectF& rectangle, Symbol symbol) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath disc;
    disc.addEllipse(rectangle);
    painter.fillPath(disc, style::white(pressed ? 0.08 : hovered ? 0.2 : 0.12));
    if (focused)
        style::paintFocusRing(painter, rectangle, rectangle.width() / 2);
    QRectF picture(0, 0, iconSide, iconSide);
    picture.moveCenter(rectangle.center());
    paintSymbol(painter, picture, symbol, style::white(hovered ? 1 : 0.8));
    painter.restore();
}

} // namespace notch
