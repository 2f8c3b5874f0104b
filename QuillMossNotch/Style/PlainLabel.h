// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

class QColor;
class QFont;
class QLabel;
class QWidget;

namespace notch {

// Fixed words of our own on one line or more, shown to the character.
QLabel* plainLabel(const QFont& font, const QColor& colour, QWidget* parent);

} // namespace notch
