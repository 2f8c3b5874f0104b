// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessible>
#include <QWidget>

namespace notch {

// Tells screen readers the role of a widget whose class does not show it. Must come before the
// first reader asks for the widget.
void setAccessibleRole(QWidget& widget, QAccessible::Role role);

} // namespace notch
