// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Style/Symbol.h"

#include <QPainterPath>
#include <QRectF>

class QColor;
class QPainter;

namespace notch {

// The symbol's outline, to be filled, on a square of this side with its origin at the top left.
inline constexpr double symbolGrid = 24;
const QPainterPath& symbolPath(Symbol symbol);

// Fills the symbol into the largest square in the middle of the rectangle.
void paintSymbol(QPainter& painter, const QRectF& rectangle, Symbol symbol, const QColor& colour);

} // namespace notch
