// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Entry/Arguments.h"

namespace notch {

// --configure-completion --apply|--remove: installs or removes the turn-end hooks in the settings
// that the edition "quillmoss" has for the current user. Any other list is answered with the usage.
int configureCompletion(const Arguments& arguments);

} // namespace notch
