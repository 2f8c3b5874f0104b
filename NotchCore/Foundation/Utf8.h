// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace notch {

// Shortest-form UTF-8 without surrogates (RFC 3629).
bool isUtf8(std::string_view text);

// The text with U+FFFD in place of whatever is not UTF-8, so that it can be sent and shown.
std::string repairedUtf8(std::string_view text);

// The scalars of a UTF-8 text.
std::size_t scalarCount(std::string_view text);

// The text cut after its first `count` scalars; the whole text if it has no more. The text must be
// UTF-8.
std::string_view firstScalars(std::string_view text, std::size_t count);

// Lower case, exact for every text whose lower case is ASCII, which is all that names of the
// protocol need: A to Z, and U+212A KELVIN SIGN, the one other scalar that becomes an ASCII letter.
std::string lowercasedName(std::string_view text);

} // namespace notch
