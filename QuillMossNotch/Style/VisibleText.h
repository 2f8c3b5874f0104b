// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace notch {

// Text of somebody else, made safe to look at: nothing in it can hide, reorder or imitate what
// stands beside it. Controls, bidirectional marks and invisible characters are shown by their code
// (‹U+202E›); text with right-to-left letters is held in the order in which it is stored by a pair
// of override characters of our own, one pair a line. The text must be UTF-8.
enum class Lines : std::uint8_t {
    one, // Line breaks and tabs are shown by their code, too.
    many,
};
std::string visibleText(std::string_view text, Lines lines);

// What visibleText() may have put round a line and into it; none of them comes through it from
// the text itself, so that whoever copies what is shown can take them out again.
inline constexpr std::string_view leftToRightOverride = "\u202D";
inline constexpr std::string_view popDirectionalFormatting = "\u202C";
inline constexpr std::string_view softBreak = "\u2060\n";

} // namespace notch
