// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Style/NotchActionStyle.h"

#include <QAbstractButton>

#include <string_view>

namespace notch {

// A button that is a symbol alone; its label is for a screen reader and as a tool tip.
class IconButton final : public QAbstractButton {
public:
    IconButton(Symbol symbol, QWidget* parent);

    // The tool tip is the label where none is given.
    void setContent(Symbol symbol, std::string_view label, std::string_view toolTip = {});

    QSize sizeHint() const override { return {NotchIconStyle::side, NotchIconStyle::side}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Symbol symbol_;
};

} // namespace notch
