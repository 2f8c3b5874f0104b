// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

namespace notch {

// How many pixels the session wants a point to have, where only it knows: 1 if it does not say, or
// says it by the resource Xft.dpi, which the toolkit follows by itself. Otherwise GDK_SCALE, the
// setting Gdk/WindowScalingFactor of the settings daemon, or mutter's own word on the bus count, in
// this order. The sizes that RandR has of screens say nothing: compositors make them up.
// Needs no toolkit; asks the display and the bus, each once.
int sessionScale();

} // namespace notch
