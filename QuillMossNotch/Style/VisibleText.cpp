// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Style/VisibleText.h"

#include "Foundation/Utf8.h"
#include "Unicode/Scalars.h"

#include <algorithm>
#include <array>

namespace notch {
namespace {

struct Range {
    char32_t first = 0;
    char32_t last = 0;
};

constexpr std::string_view leftToRightOverride = "\u202D";
constexpr std::string_view popDirectionalFormatting = "\u202C";

// Characters that show nothing of themselves: general categories Cc, Cf, Zl and Zp, the fillers
// that draw as blanks, and the tags. Variation selectors stay: they only pick a glyph.
constexpr std::array hiddenRanges{Range{0x0000, 0x001F}, Range{0x007F, 0x009F},
    Range{0x00AD, 0x00AD}, Range{0x034F, 0x034F}, Range{0x0600, 0x0605}, Range{0x061C, 0x061C},
    Range{0x06DD, 0x06DD}, Range{0x070F, 0x070F}, Range{0x0890, 0x0891}, Range{0x08E2, 0x08E2},
    Range{0x115F, 0x1160}, Range{0x17B4, 0x17B5}, Range{0x180B, 0x180F}, Range{0x200B, 0x200F},
    Range{0x2028, 0x202E}, Range{0x2060, 0x206F}, Range{0x2800, 0x2800}, Range{0x3164, 0x3164},
    Range{0xFEFF, 0xFEFF}, Range{0xFFA0, 0xFFA0}, Range{0xFFF0, 0xFFFC}, Range{0x110BD, 0x110BD},
    Range{0x110CD, 0x110CD}, Range{0x13430, 0x1343F}, Range{0x1BCA0, 0x1BCA3},
    Range{0x1D173, 0x1D17A}, Range{0xE0000, 0xE0FFF}};

// Blocks whose letters run from right to left.
constexpr std::array rightToLeftRanges{Range{0x0590, 0x08FF}, Range{0xFB1D, 0xFDFF},
    Range{0xFE70, 0xFEFE}, Range{0x10800, 0x10FFF}, Range{0x1E800, 0x1EFFF}};

template <std::size_t count> bool contains(const std::array<Range, count>& ranges, char32_t scalar)
{
    return std::ranges::any_of(
        ranges, [=](Range range) { return scalar >= range.first && scalar <= range.last; });
}

// Nearly everything, and texts can be long.
bool isPlain(char byte)
{
    return byte >= ' ' && byte <= '~';
}

std::string codeOf(char32_t scalar)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string code;
    for (auto rest = scalar; rest > 0 || code.size() < 4; rest /= 16)
        code.insert(code.begin(), digits[rest % 16]);
    return "‹U+" + code + "›";
}

} // namespace

std::string visibleText(std::string_view text, Lines lines)
{
    const bool many = lines == Lines::many;
    const auto staysAsItIs = [many](char byte) {
        return isPlain(byte) || (many && (byte == '\n' || byte == '\t'));
    };
    std::string shown;
    shown.reserve(text.size());
    bool rightToLeft = false;
    while (!text.empty()) {
        const auto plain =
            static_cast<std::size_t>(std::ranges::find_if_not(text, staysAsItIs) - text.begin());
        shown += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty())
            break;
        ScalarReader reader(text);
        const auto scalar = reader.next();
        rightToLeft = rightToLeft || contains(rightToLeftRanges, scalar);
        if (contains(hiddenRanges, scalar))
            shown += codeOf(scalar);
        else
            shown += reader.bytes();
        text.remove_prefix(reader.bytes().size());
    }
    if (many || !rightToLeft)
        return shown;
    return std::string(leftToRightOverride) + shown + std::string(popDirectionalFormatting);
}

std::string cutInTheMiddle(std::string_view text, std::size_t longest)
{
    const auto count = scalarCount(text);
    if (count <= longest)
        return std::string(text);
    const auto end = firstScalars(text, count - longest / 2).size();
    return std::string(firstScalars(text, longest / 2)) + "…" + std::string(text.substr(end));
}

} // namespace notch
