// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>

namespace notch {

// To standard output. A stream that is closed or full loses the text.
void print(std::string_view text);

// To standard error; the result is the exit status that goes with it.
int complain(std::string_view text);

} // namespace notch
