// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

namespace notch {

// The classes of the windows of the host's editions: what their desktop entries say
// ("quillmoss.desktop", "quillmoss-ai.desktop"), else the entries' own names.
std::vector<std::string> hostWindowClasses();

} // namespace notch
