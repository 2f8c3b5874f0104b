// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace notch {

// Text of another program, made safe to look at: nothing in it can hide or imitate what is beside
// it. Controls, bidirectional marks and invisible characters are shown by their code (‹U+202E›).
// The text must be UTF-8.
enum class Lines : std::uint8_t {
    // Line breaks and tabs are shown by their code, too. A text with right-to-left letters is held
    // in the order in which it is stored by a pair of override characters of our own.
    one,
    // For a TextBlock, which keeps that order by itself.
    many,
};
std::string visibleText(std::string_view text, Lines lines);

// The whole text when it has no more than that many characters; else its beginning and its end, and
// a mark between them.
std::string cutInTheMiddle(std::string_view text, std::size_t longest);

} // namespace notch
