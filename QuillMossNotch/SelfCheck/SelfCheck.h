// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <iosfwd>

namespace notch {

// The check that whoever installed the program can run: the shipped model, view, panel and settings
// go through their scenarios, with everything outside them made up and on virtual time. No display,
// no session, no hook and no host is looked for, and nothing is decided or brought to the front.
//
// Writes a line for each check and one for each suite. Returns the exit status: 0 when every check
// passed. Needs a QApplication. Main thread.
int runSelfCheck(std::ostream& out);

} // namespace notch
