// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPointF>
#include <QWindow>

#include <optional>

namespace notch {

// Where the pointer is now, in points from the window's top left corner: the middle of its device
// pixel. Nothing while it is on another X screen or not on a window of this program: XWayland keeps
// the last position when the pointer has gone on to a native window, and has no window under it
// then. The window must have been created.
std::optional<QPointF> pointerPositionIn(QWindow& window);

} // namespace notch
