// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Entry/Arguments.h"

namespace notch {

// Finds the one mode that the argument list asks for, runs it, and returns the process's exit
// status. Nothing is initialised before the mode is known: a hook process never touches the window
// system.
int runProgram(const Arguments& arguments);

} // namespace notch
