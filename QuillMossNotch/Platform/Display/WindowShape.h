// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Geometry/NotchShape.h"

#include <QWindow>

#include <span>

namespace notch {

// Where a window can be clicked and seen (X Nonrectangular Window Shape Extension). Nothing happens
// without an X server. The window must have been created.

// Clicks count only on these pixels; elsewhere they reach the window below.
void setInputRegion(QWindow& window, std::span<const PixelRect> pixels);
// The window is cut to these pixels, with hard edges.
void setVisibleRegion(QWindow& window, std::span<const PixelRect> pixels);
// The whole rectangle shows again, as transparent as the window draws it.
void clearVisibleRegion(QWindow& window);
// What the server shows from a change of the window's size until it is drawn anew: what there was,
// hanging from the middle of the top edge, and nothing beside it.
void keepPictureInResize(QWindow& window);
// Compositors draw no shadow for its rectangle, which is larger than what is drawn in it.
void forbidShadow(QWindow& window);

} // namespace notch
