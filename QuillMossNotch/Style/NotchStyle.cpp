// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Style/NotchStyle.h"

#include <QPainter>
#include <QScrollBar>
#include <QStringList>
#include <QTextDocument>
#include <QWidget>

namespace notch {
namespace {

// Far beyond any path or session id; a tool tip has no scroll bar.
constexpr int maxToolTipLength = 4'600;
constexpr int maxUnbrokenLength = 60;

QFont fontOf(const QStringList& families, int size, QFont::Weight weight)
{
    QFont font(families);
    font.setPixelSize(size);
    font.setWeight(weight);
    return font;
}

} // namespace

QColor style::white(double opacity)
{
    return QColor::fromRgbF(1, 1, 1, static_cast<float>(opacity));
}

void style::paintFocusRing(QPainter& painter, const QRectF& rectangle, double radius)
{
    painter.setPen(QPen(white(0.85), 1.5));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(rectangle.adjusted(1, 1, -1, -1), radius, radius);
}

void style::makeQuiet(QScrollBar& bar)
{
    bar.setStyleSheet(
        QStringLiteral("QScrollBar:vertical { background: transparent; width: %1px; }"
                       "QScrollBar::handle:vertical { background: rgba(255,255,255,90);"
                       " border-radius: 3px; min-height: 24px; margin: 1px; }"
                       "QScrollBar::add-line, QScrollBar::sub-line { height: 0; }"
                       "QScrollBar::add-page, QScrollBar::sub-page { background: none; }")
            .arg(scrollBarWidth));
}

QFont style::font(int size, QFont::Weight weight)
{
    static const QStringList families{QStringLiteral("Noto Sans CJK SC"),
        QStringLiteral("Source Han Sans SC"), QStringLiteral("WenQuanYi Micro Hei"),
        QStringLiteral("sans-serif")};
    return fontOf(families, size, weight);
}

QFont style::monospaced(int size)
{
    static const QStringList families{QStringLiteral("Noto Sans Mono CJK SC"),
        QStringLiteral("Source Han Mono SC"), QStringLiteral("monospace")};
    return fontOf(families, size, QFont::Normal);
}

QString toQString(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

void setPlainToolTip(QWidget& widget, std::string_view text)
{
    auto plain = toQString(text);
    if (plain.size() > maxToolTipLength)
        plain = plain.left(maxToolTipLength) + QChar(0x2026);
    widget.setAccessibleDescription(plain);
    // Qt breaks the lines of rich text only.
    const bool asItIs = plain.size() <= maxUnbrokenLength && !Qt::mightBeRichText(plain);
    widget.setToolTip(asItIs ? plain
                             : QStringLiteral("<span style=\"white-space:pre-wrap\">%1</span>")
                                   .arg(plain.toHtmlEscaped()));
}

} // namespace notch
