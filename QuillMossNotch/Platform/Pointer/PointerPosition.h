// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPointF>
#include <QWindow>

#include <optional>

namespace notch {

// Where the pointer is now, in points from the window's top left corner: the middle of its device
// pixel. Nothing while it is on another X screen. The window must have been created.
std::optional<QPointF> pointerPositionIn(QWindow& window);

} // namespace notch
