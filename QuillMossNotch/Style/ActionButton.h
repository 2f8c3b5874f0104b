// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Style/NotchActionStyle.h"

#include <QAbstractButton>

namespace notch {

// A button with words. It can be reached with the tabulator key; it is never a default button.
class ActionButton : public QAbstractButton {
public:
    ActionButton(NotchActionStyle::Role role, QWidget* parent);

    // Its words are its name for a screen reader, too.
    void setContent(Symbol symbol, std::string_view text);
    void setCompact();
    void setReducesMotion(bool reduces) { look_.reducesMotion = reduces; }

    QSize sizeHint() const override { return look_.sizeFor(symbol_, text()); }
    QSize minimumSizeHint() const override { return {24, sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    NotchActionStyle look_; // What does not change from one painting to the next.
    Symbol symbol_ = Symbol::none;
};

} // namespace notch
