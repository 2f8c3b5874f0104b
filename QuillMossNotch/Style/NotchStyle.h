// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Style/Symbol.h"

#include <QColor>
#include <QFont>
#include <QString>

#include <string_view>

class QPainter;
class QRectF;
class QScrollBar;
class QWidget;

namespace notch {

// Colours and fonts of the black surface.
namespace style {

inline constexpr QColor surface{0, 0, 0};
inline constexpr QColor accent{0x8A, 0xD9, 0x9B};
inline constexpr QColor onAccent{0x08, 0x1C, 0x0D};
inline constexpr QColor warning{0xFF, 0xA1, 0x4A};
inline constexpr QColor text{0xFF, 0xFF, 0xFF};

// White at an opacity, as every secondary text and every fill of the surface is.
QColor white(double opacity);

// The ring round the control that has the keyboard.
void paintFocusRing(QPainter& painter, const QRectF& rectangle, double radius);

// Makes the bar narrow and takes its arrows away.
void makeQuiet(QScrollBar& bar);
inline constexpr int scrollBarWidth = 8;

// Sans serif with Chinese glyphs of the simplified forms, whatever the desktop's language.
QFont font(int size, QFont::Weight weight = QFont::Normal);
// The same with Latin letters of one width.
QFont monospaced(int size);

} // namespace style

QString toQString(std::string_view text);

// A tool tip that shows exactly this text; Qt would read one that looks like HTML as HTML.
void setPlainToolTip(QWidget& widget, std::string_view text);

} // namespace notch
