// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SettingsView/SettingsStyle.h"

#include "Style/NotchStyle.h"
#include "Style/SymbolPath.h"

#include <QApplication>
#include <QFontInfo>
#include <QIconEngine>
#include <QPainter>

#include <algorithm>

namespace notch {
namespace {

// The sizes of the settings are made for a desktop whose texts have this many pixels; smaller or
// slightly larger ones change nothing.
constexpr double usualTextSize = 13;
constexpr double leastScale = 1.2;
constexpr double mostScale = 2;

double textScale()
{
    const double scale = QFontInfo(QApplication::font()).pixelSize() / usualTextSize;
    return scale < leastScale ? 1 : std::min(scale, mostScale);
}

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness() < 128;
}

QColor mixed(const QColor& one, const QColor& other, float share)
{
    const auto mix = [&](float a, float b) { return a * share + b * (1 - share); };
    return QColor::fromRgbF(mix(one.redF(), other.redF()), mix(one.greenF(), other.greenF()),
        mix(one.blueF(), other.blueF()));
}

class SymbolIcon final : public QIconEngine {
public:
    explicit SymbolIcon(Symbol symbol)
        : symbol_(symbol)
    {
    }

    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State) override
    {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        paintSymbol(
            *painter, place, symbol_, QApplication::palette().color(group, QPalette::ButtonText));
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return picture;
    }
    QIconEngine* clone() const override { return new SymbolIcon(symbol_); }

private:
    Symbol symbol_;
};

} // namespace

int settings::scaled(int size)
{
    return qRound(size * textScale());
}

QFont settings::font(int size, QFont::Weight weight)
{
    return style::font(scaled(size), weight);
}

QFont settings::monospaced(int size)
{
    return style::monospaced(scaled(size));
}

QColor settings::colour(Tone tone, const QPalette& palette)
{
    const auto text = palette.color(QPalette::WindowText);
    const bool dark = isDark(palette);
    switch (tone) {
    case Tone::plain:
        return text;
    case Tone::secondary:
        return mixed(text, palette.color(QPalette::Window), 0.68F);
    case Tone::good:
        return dark ? QColor(0x6B, 0xD4, 0x8A) : QColor(0x1E, 0x7D, 0x3C);
    case Tone::caution:
        return dark ? QColor(0xFF, 0xB0, 0x5C) : QColor(0xB2, 0x57, 0x00);
    case Tone::bad:
        return dark ? QColor(0xFF, 0x86, 0x7D) : QColor(0xC4, 0x26, 0x1D);
    }
    return text;
}

QColor settings::ground(const QPalette& palette)
{
    const auto window = palette.color(QPalette::Window);
    return isDark(palette) ? mixed(QColor(Qt::white), window, 0.06F)
                           : mixed(QColor(Qt::white), window, 0.7F);
}

QPalette settings::windowPalette()
{
    QPalette colours;
    colours.setColor(QPalette::PlaceholderText, colour(Tone::secondary, QApplication::palette()));
    return colours;
}

QIcon settings::icon(Symbol symbol)
{
    return QIcon(new SymbolIcon(symbol));
}

} // namespace notch
