// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

namespace notch {

// The desktop asks its programs for fewer movements: Gtk/EnableAnimations is 0 in the XSETTINGS of
// the session (GNOME, KDE, Xfce, MATE and Cinnamon publish it; also for XWayland). Asked afresh at
// each call, so that a change counts at once. False where no desktop tells.
bool reduceMotion();

} // namespace notch
