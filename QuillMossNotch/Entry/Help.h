// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Entry/Arguments.h"

namespace notch {

// --help and -h: what a person may type, on standard output.
int printHelp(const Arguments& arguments);

// --version: one line on standard output.
int printVersion(const Arguments& arguments);

} // namespace notch
