// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <initializer_list>
#include <string_view>

namespace notch {

// Gives the process all three standard streams, /dev/null in place of a closed one, so that no file
// that is opened later becomes standard output.
void openStandardStreams();

// To standard output; false when not all of it could be written. Takes no memory.
bool print(std::initializer_list<std::string_view> pieces);

// To standard error; the result is the exit status that goes with it. Takes no memory.
int complain(std::initializer_list<std::string_view> pieces);

} // namespace notch
