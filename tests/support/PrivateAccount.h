// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "support/ChildProcess.h"

#include <string>
#include <vector>

namespace notch {

// False where the account database cannot be wrapped; nothing may be run then, since it would work
// in the real home.
bool canWrapAccount();

// Runs the program in an account whose home is this directory (nss_wrapper(1)). HOME names another,
// which must not matter.
ChildProcess::Ending runProgramAtHome(
    const std::string& home, const std::string& path, const std::vector<std::string>& arguments);

} // namespace notch
