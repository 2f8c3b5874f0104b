// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Style/Symbol.h"

#include <QRectF>
#include <QSize>
#include <QString>

#include <cstdint>

class QPainter;

namespace notch {

// How a button with words looks: a value made for one painting.
struct NotchActionStyle {
    enum class Role : std::uint8_t {
        plain, // Words alone.
        secondary,
        primary,
    };

    Role role = Role::secondary;
    bool compact = false; // Smaller, for a place beside other text.
    bool enabled = true;
    bool hovered = false;
    bool pressed = false;
    bool focused = false;
    bool reducesMotion = false; // No shrinking while pressed.

    QSize sizeFor(Symbol symbol, const QString& text) const;
    void paint(
        QPainter& painter, const QRectF& rectangle, Symbol symbol, const QString& text) const;
};

// The same for a button that is a symbol alone.
struct NotchIconStyle {
    bool hovered = false;
    bool pressed = false;
    bool focused = false;

    static constexpr int side = 28;

    void paint(QPainter& painter, const QRectF& rectangle, Symbol symbol) const;
};

} // namespace notch
