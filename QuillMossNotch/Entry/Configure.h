// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Entry/Arguments.h"

namespace notch {

// --configure quillmoss|quillmossAI [--apply|--remove]: shows, installs or removes the approval
// hook in that edition's settings of the current user. Without --apply or --remove it only shows.
int configure(const Arguments& arguments);

} // namespace notch
