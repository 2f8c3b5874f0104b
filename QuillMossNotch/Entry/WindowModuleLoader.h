// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Entry/Arguments.h"
#include "WindowModule.h"

namespace notch {

// Loads the window module from its place relative to this program, the same in the build tree and
// under any prefix, and runs the mode in it. One line on standard error and status 1 when it is
// missing or cannot be loaded.
int runWindowModule(WindowMode mode, const Arguments& arguments);

} // namespace notch
