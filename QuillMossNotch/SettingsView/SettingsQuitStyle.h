// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QRectF>
#include <QSize>
#include <QString>

class QFont;
class QPainter;
class QPalette;

namespace notch {

// How the button that quits looks: its symbol and words alone, on a ground only under the pointer.
struct SettingsQuitStyle {
    bool hovered = false;
    bool pressed = false;
    bool focused = false;

    QSize sizeFor(const QString& text, const QFont& font) const;
    void paint(QPainter& painter, const QRectF& rectangle, const QString& text,
        const QPalette& palette) const;
};

} // namespace notch
