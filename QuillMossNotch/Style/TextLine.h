// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Style/Symbol.h"

#include <QColor>
#include <QLabel>

#include <string_view>

namespace notch {

// One line of plain text, with a symbol before it or none. It never asks for more width than it is
// given: what does not fit is left out, and a screen reader still has the whole.
class TextLine final : public QLabel {
public:
    TextLine(const QFont& font, const QColor& colour, QWidget* parent);

    void setContent(Symbol symbol, std::string_view text);
    void setColour(const QColor& colour);
    // Where the end of a text matters as much as its beginning, as in a path.
    void setElidesMiddle() { elide_ = Qt::ElideMiddle; }
    // On a rounded ground of its own.
    void setChip();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int textLeft() const;

    QColor colour_;
    Symbol symbol_ = Symbol::none;
    Qt::TextElideMode elide_ = Qt::ElideRight;
    bool chip_ = false;
};

} // namespace notch
