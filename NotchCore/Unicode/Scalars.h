// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>
#include <vector>

namespace notch {

// Questions about the scalars of a UTF-8 text that need Unicode's tables. "White space" is
// Unicode's property White_Space, the line separators included.

// The scalars of a text from front to back. Ill-formed bytes read as `illFormed`.
class ScalarReader {
public:
    static constexpr char32_t illFormed = 0xFFFFFFFF;

    explicit ScalarReader(std::string_view text)
        : text_(text)
    {
    }

    bool atEnd() const { return at_ == text_.size(); }
    // Not at the end.
    char32_t next();
    // The bytes of the scalar last read.
    std::string_view bytes() const { return text_.substr(start_, at_ - start_); }

private:
    std::string_view text_;
    std::size_t start_ = 0;
    std::size_t at_ = 0;
};

bool isWhiteSpace(char32_t scalar);
// General category Control (Cc) or Format (Cf), or no scalar at all: whatever could make a text
// look other than it reads.
bool isControlOrFormat(char32_t scalar);
// One of the scalars is control or format and is not among `allowed`.
bool hasControlOrFormat(std::string_view text, std::u32string_view allowed);

// Without the white space at both ends.
std::string_view trimmed(std::string_view text);
// The parts between white space, none of them empty.
std::vector<std::string_view> words(std::string_view text);
// General category Decimal Number (Nd) throughout. True for the empty text.
bool isDecimalDigits(std::string_view text);

} // namespace notch
