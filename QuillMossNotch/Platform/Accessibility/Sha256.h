// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

namespace notch {

// The digest in lower-case hexadecimal.
std::string sha256(std::string_view bytes);

} // namespace notch
