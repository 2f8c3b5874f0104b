// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Unicode/Scalars.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

namespace notch {

char32_t ScalarReader::next()
{
    start_ = at_;
    UChar32 scalar = 0;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion" // Inside ICU's macro.
    U8_NEXT(text_.data(), at_, text_.size(), scalar);
#pragma GCC diagnostic pop
    return scalar < 0 ? illFormed : static_cast<char32_t>(scalar);
}

bool isWhiteSpace(char32_t scalar)
{
    return scalar != ScalarReader::illFormed && u_isUWhiteSpace(static_cast<UChar32>(scalar));
}

bool isControlOrFormat(char32_t scalar)
{
    if (scalar == ScalarReader::illFormed)
        return true;
    const auto category = u_charType(static_cast<UChar32>(scalar));
    return category == U_CONTROL_CHAR || category == U_FORMAT_CHAR;
}

bool hasControlOrFormat(std::string_view text, std::u32string_view allowed)
{
    for (ScalarReader reader(text); !reader.atEnd();) {
        const auto scalar = reader.next();
        if (isControlOrFormat(scalar) && allowed.find(scalar) == std::u32string_view::npos)
            return true;
    }
    return false;
}

std::string_view trimmed(std::string_view text)
{
    const char* begin = nullptr;
    const char* end = nullptr;
    for (ScalarReader reader(text); !reader.atEnd();) {
        if (isWhiteSpace(reader.next()))
            continue;
        const auto bytes = reader.bytes();
        begin = begin ? begin : bytes.data();
        end = bytes.data() + bytes.size();
    }
    return begin ? std::string_view(begin, static_cast<std::size_t>(end - begin))
                 : std::string_view();
}

std::vector<std::string_view> words(std::string_view text)
{
    std::vector<std::string_view> found;
    bool inWord = false;
    for (ScalarReader reader(text); !reader.atEnd();) {
        const bool blank = isWhiteSpace(reader.next());
        const auto bytes = reader.bytes();
        if (!blank && inWord)
            found.back() = {found.back().data(), found.back().size() + bytes.size()};
        else if (!blank)
            found.push_back(bytes);
        inWord = !blank;
    }
    return found;
}

bool isDecimalDigits(std::string_view text)
{
    for (ScalarReader reader(text); !reader.atEnd();) {
        const auto scalar = reader.next();
        if (scalar == ScalarReader::illFormed || !u_isdigit(static_cast<UChar32>(scalar)))
            return false;
    }
    return true;
}

} // namespace notch
