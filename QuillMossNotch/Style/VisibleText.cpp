// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Style/VisibleText.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace notch {
namespace {

struct Range {
    char32_t first = 0;
    char32_t last = 0;
};

constexpr std::size_t longestLine = 1'200; // Bytes.

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

std::size_t sequenceLength(char lead)
{
    const auto byte = static_cast<unsigned char>(lead);
    if (byte < 0x80)
        return 1;
    if (byte < 0xE0)
        return 2;
    return byte < 0xF0 ? 3 : 4;
}

char32_t scalarOf(std::string_view sequence)
{
    constexpr std::array<unsigned char, 5> leadBits{0, 0x7F, 0x1F, 0x0F, 0x07};
    auto scalar = static_cast<char32_t>(
        static_cast<unsigned char>(sequence.front()) & leadBits[sequence.size()]);
    for (const char next : sequence.substr(1))
        scalar = (scalar << 6U) | (static_cast<unsigned char>(next) & 0x3FU);
    return scalar;
}

std::string codeOf(char32_t scalar)
{
    std::array<char, 16> code{};
    std::snprintf(code.data(), code.size(), "U+%04X", static_cast<unsigned>(scalar));
    return std::string("‹") + code.data() + "›";
}

// One line so far.
struct Line {
    std::string text;
    bool rightToLeft = false;

    void add(std::string_view sequence, bool keepsTabs)
    {
        const auto scalar = scalarOf(sequence);
        if (scalar >= U' ' && scalar <= U'~') { // Nearly everything, and texts can be long.
            text += sequence;
            return;
        }
        rightToLeft = rightToLeft || contains(rightToLeftRanges, scalar);
        if (contains(hiddenRanges, scalar) && !(keepsTabs && scalar == U'\t'))
            text += codeOf(scalar);
        else
            text += sequence;
    }
    std::string finished() const
    {
        if (!rightToLeft)
            return text;
        return std::string(leftToRightOverride) + text + std::string(popDirectionalFormatting);
    }
};

} // namespace

std::string visibleText(std::string_view text, Lines lines)
{
    std::string result;
    Line line;
    for (std::size_t at = 0; at < text.size();) {
        const auto sequence = text.substr(at, sequenceLength(text[at]));
        at += sequence.size();
        if (lines == Lines::many && sequence == "\n") {
            result += line.finished() + '\n';
            line = {};
        } else {
            line.add(sequence, lines == Lines::many);
        }
        if (lines == Lines::many && line.text.size() >= longestLine) {
            result += line.finished();
            result += softBreak;
            line = {};
        }
    }
    return result + line.finished();
}

} // namespace notch
