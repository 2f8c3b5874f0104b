// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Foundation/Utf8.h"

#include <cstdint>

namespace notch {
namespace {

bool isContinuation(unsigned char byte)
{
    return (byte & 0xC0) == 0x80;
}

// The bytes of the scalar at `at`, or 0 where no valid one stands (table 3-7 of the Unicode
// standard).
std::size_t scalarLength(std::string_view text, std::size_t at)
{
    const auto byte = [&](std::size_t i) {
        return at + i < text.size() ? static_cast<unsigned char>(text[at + i]) : 0U;
    };
    const auto lead = byte(0);
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead <= 0xDF)
        return isContinuation(static_cast<unsigned char>(byte(1))) ? 2 : 0;
    const auto second = byte(1);
    const bool tail = isContinuation(static_cast<unsigned char>(byte(2)));
    if (lead >= 0xE0 && lead <= 0xEF) {
        const auto low = lead == 0xE0 ? 0xA0U : 0x80U;
        const auto high = lead == 0xED ? 0x9FU : 0xBFU;
        return second >= low && second <= high && tail ? 3 : 0;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        const auto low = lead == 0xF0 ? 0x90U : 0x80U;
        const auto high = lead == 0xF4 ? 0x8FU : 0xBFU;
        const bool last = isContinuation(static_cast<unsigned char>(byte(3)));
        return second >= low && second <= high && tail && last ? 4 : 0;
    }
    return 0;
}

} // namespace

bool isUtf8(std::string_view text)
{
    for (std::size_t at = 0; at < text.size();) {
        const auto length = scalarLength(text, at);
        if (length == 0)
            return false;
        at += length;
    }
    return true;
}

std::string_view firstScalars(std::string_view text, std::size_t count)
{
    std::size_t at = 0;
    while (at < text.size()) {
        const bool startsScalar = !isContinuation(static_cast<unsigned char>(text[at]));
        if (startsScalar && count-- == 0)
            break;
        ++at;
    }
    return text.substr(0, at);
}

std::string lowercasedName(std::string_view text)
{
    constexpr std::string_view kelvinSign = "\u212A";
    std::string lowered;
    lowered.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text.substr(at, kelvinSign.size()) == kelvinSign) {
            lowered += 'k';
            at += kelvinSign.size() - 1;
        } else {
            const char character = text[at];
            const bool upper = character >= 'A' && character <= 'Z';
            lowered += upper ? static_cast<char>(character - 'A' + 'a') : character;
        }
    }
    return lowered;
}

} // namespace notch
