// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Foundation/Utf8.h"

#include <algorithm>
#include <array>

namespace notch {
namespace {

constexpr std::string_view replacementCharacter = "\uFFFD";

struct ByteRange {
    unsigned char first = 0x80;
    unsigned char last = 0xBF;
};

constexpr bool contains(ByteRange range, char character)
{
    const auto byte = static_cast<unsigned char>(character);
    return byte >= range.first && byte <= range.last;
}

bool isContinuation(char character)
{
    return contains({}, character);
}

// The first bytes of a text: one scalar, or the bytes that one replacement character stands for,
// which are the longest beginning of a scalar that is there, and at least one byte.
struct Sequence {
    std::size_t length = 1;
    bool isScalar = false;
};

// By table 3-7 of the Unicode standard. The text is not empty.
Sequence firstSequence(std::string_view text)
{
    struct Form {
        ByteRange lead;
        std::size_t length;
        ByteRange second;
    };
    static constexpr std::array forms{
        Form{{0x00, 0x7F}, 1, {}},
        Form{{0xC2, 0xDF}, 2, {}},
        Form{{0xE0, 0xE0}, 3, {0xA0, 0xBF}},
        Form{{0xE1, 0xEC}, 3, {}},
        Form{{0xED, 0xED}, 3, {0x80, 0x9F}},
        Form{{0xEE, 0xEF}, 3, {}},
        Form{{0xF0, 0xF0}, 4, {0x90, 0xBF}},
        Form{{0xF1, 0xF3}, 4, {}},
        Form{{0xF4, 0xF4}, 4, {0x80, 0x8F}},
    };
    const auto* const form = std::ranges::find_if(
        forms, [&](const Form& each) { return contains(each.lead, text.front()); });
    if (form == forms.end())
        return {};
    std::size_t length = 1;
    while (length < form->length && length < text.size()
           && contains(length == 1 ? form->second : ByteRange{}, text[length]))
        ++length;
    return {length, length == form->length};
}

} // namespace

bool isUtf8(std::string_view text)
{
    while (!text.empty()) {
        const auto sequence = firstSequence(text);
        if (!sequence.isScalar)
            return false;
        text.remove_prefix(sequence.length);
    }
    return true;
}

std::string repairedUtf8(std::string_view text)
{
    std::string repaired;
    while (!text.empty()) {
        const auto sequence = firstSequence(text);
        repaired += sequence.isScalar ? text.substr(0, sequence.length) : replacementCharacter;
        text.remove_prefix(sequence.length);
    }
    return repaired;
}

std::size_t scalarCount(std::string_view text)
{
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char byte) { return !isContinuation(byte); }));
}

std::string_view firstScalars(std::string_view text, std::size_t count)
{
    std::size_t at = 0;
    while (at < text.size()) {
        const bool startsScalar = !isContinuation(text[at]);
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
