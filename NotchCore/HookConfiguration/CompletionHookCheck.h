// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Result.h"

#include <string>

namespace notch {

// Whether the host's settings hold the turn-end hooks of the running executable; or one line for
// the person that says why it cannot be told. Reads only.
Result<bool, std::string> completionHookInstalled();

} // namespace notch
