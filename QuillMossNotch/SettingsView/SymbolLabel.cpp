// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SettingsView/SymbolLabel.h"

#include "SettingsView/SettingsStyle.h"
#include "Style/NotchStyle.h"
#include "Style/SymbolPath.h"

#include <QPainter>

#include <algorithm>

namespace notch {
namespace {

constexpr int symbolGap = 7;

} // namespace

SymbolLabel::SymbolLabel(const QFont& font, Tone textTone, int side)
    : side_(side)
{
    setFont(font);
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setForegroundRole(textTone == Tone::plain ? QPalette::WindowText : QPalette::PlaceholderText);
}

void SymbolLabel::setContent(const StatusLine& line)
{
    symbol_ = line.symbol;
    symbolTone_ = line.tone;
    setContentsMargins(symbol_ == Symbol::none ? 0 : side_ + symbolGap, 0, 0, 0);
    const auto words = toQString(line.text);
    if (text() != words) // A selection survives what changes nothing.
        setText(words);
    update();
}

void SymbolLabel::makeSelectable()
{
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setFocusPolicy(Qt::StrongFocus);
}

void SymbolLabel::paintEvent(QPaintEvent* event)
{
    QLabel::paintEvent(event);
    if (symbol_ == Symbol::none)
        return;
    QPainter painter(this);
    // In the middle of the first line; the text is in the middle of a label that is higher.
    const int textHeight = text().isEmpty() ? side_ : heightForWidth(width());
    const int lineHeight = text().isEmpty() ? side_ : fontMetrics().height();
    const double top = std::max(0.0, (height() - textHeight + lineHeight - side_) / 2.0);
    paintSymbol(
        painter, QRectF(0, top, side_, side_), symbol_, settings::colour(symbolTone_, palette()));
}

SymbolLabel* plainLabel(std::string_view text, const QFont& font, Tone tone)
{
    auto* const label = new SymbolLabel(font, tone);
    label->setContent({Symbol::none, Tone::plain, text});
    return label;
}

} // namespace notch
