// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SettingsView/SettingsQuitStyle.h"

#include "SettingsView/SettingsStyle.h"
#include "Style/SymbolPath.h"

#include <QFontMetrics>
#include <QPainter>

namespace notch {
namespace {

constexpr double radius = 7;
constexpr int sidePadding = 10;
constexpr int heightPadding = 7;
constexpr int symbolGap = 6;

int symbolSide(const QFontMetrics& metrics)
{
    return metrics.ascent();
}

double groundOpacity(const SettingsQuitStyle& look)
{
    if (look.pressed)
        return 0.18;
    return look.hovered ? 0.09 : 0;
}

} // namespace

QSize SettingsQuitStyle::sizeFor(const QString& text, const QFont& font) const
{
    const QFontMetrics metrics(font);
    return {symbolSide(metrics) + symbolGap + metrics.horizontalAdvance(text) + 2 * sidePadding,
        metrics.height() + 2 * heightPadding};
}

void SettingsQuitStyle::paint(
    QPainter& painter, const QRectF& rectangle, const QString& text, const QPalette& palette) const
{
    painter.setRenderHint(QPainter::Antialiasing);
    const auto frame = rectangle.adjusted(1, 1, -1, -1);
    auto ground = palette.color(QPalette::WindowText);
    ground.setAlphaF(static_cast<float>(groundOpacity(*this)));
    painter.setPen(focused ? QPen(palette.color(QPalette::Highlight), 2) : QPen(Qt::NoPen));
    painter.setBrush(ground);
    painter.drawRoundedRect(frame, radius, radius);

    const auto words = settings::colour(Tone::plain, palette);
    const int side = symbolSide(painter.fontMetrics());
    const QRectF symbol(
        rectangle.left() + sidePadding, rectangle.center().y() - side / 2.0, side, side);
    paintSymbol(painter, symbol, Symbol::power, words);
    painter.setPen(words);
    painter.drawText(rectangle.adjusted(symbol.right() - rectangle.left() + symbolGap, 0, 0, 0),
        Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, text);
}

} // namespace notch
