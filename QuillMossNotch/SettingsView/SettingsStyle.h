// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "SettingsView/SectionContent.h"
#include "Style/Symbol.h"

#include <QColor>
#include <QFont>
#include <QIcon>
#include <QPalette>

namespace notch::settings {

inline constexpr int contentWidth = 600;
inline constexpr int sideMargin = 24;

// A length for text of that size, larger where the person's font is: 1 to 2 times.
int scaled(int size);
QFont font(int size, QFont::Weight weight = QFont::Normal);
QFont monospaced(int size);

// Legible on the palette's windows, dark or light.
QColor colour(Tone tone, const QPalette& palette);
// The ground of a section, a little apart from the window's.
QColor ground(const QPalette& palette);
// For a window of the settings: what is secondary has the role PlaceholderText in it.
QPalette windowPalette();

// The symbol in the colour of the application's button texts.
QIcon icon(Symbol symbol);

} // namespace notch::settings
