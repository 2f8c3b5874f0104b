// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessible>
#include <QWidget>

namespace notch {

// What a screen reader takes a widget for, whose class alone does not tell it. Before the first
// reader asks for the widget.
void setAccessibleRole(QWidget& widget, QAccessible::Role role);

} // namespace notch
