// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Style/Symbol.h"

#include <QColor>
#include <QLabel>

#include <string_view>

namespace notch {

// One line of plain text, with a symbol before it or none. It never asks for more width than it is
// given: what does not fit is left out, a mark says so, and a screen reader still has the whole.
class TextLine final : public QLabel {
public:
    TextLine(const QFont& font, const QColor& colour, QWidget* parent);

    void setContent(Symbol symbol, std::string_view text);
    void setColour(const QColor& colour);
    // For a text whose end matters as much as its beginning, such as a path.
    void setElidesMiddle() { elide_ = Qt::ElideMiddle; }
    // Puts the line on a rounded ground of its own.
    void setChip();
    // Shows the whole text in as many rows as it needs, with smaller letters when they are many.
    // For some hundred characters at the most.
    void setWraps();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }
    bool hasHeightForWidth() const override { return wraps_; }
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int textLeft() const;
    QFont fontAt(int width) const;
    void paintText(QPainter& painter, const QRect& place) const;

    QColor colour_;
    Symbol symbol_ = Symbol::none;
    Qt::TextElideMode elide_ = Qt::ElideRight;
    bool chip_ = false;
    bool wraps_ = false;
};

} // namespace notch
