// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Style/Symbol.h"

#include <QColor>
#include <QWidget>

namespace notch {

// A symbol on its own, as large as it is told to be.
class SymbolPicture final : public QWidget {
public:
    SymbolPicture(int side, QWidget* parent);

    void setSymbol(Symbol symbol, const QColor& colour);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Symbol symbol_ = Symbol::none;
    QColor colour_;
};

} // namespace notch
