// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Foundation/UUID.h"

#include <stdlib.h>

namespace notch {
namespace {

constexpr std::string_view layout = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";

std::optional<std::uint8_t> digitValue(char digit)
{
    if (digit >= '0' && digit <= '9')
        return static_cast<std::uint8_t>(digit - '0');
    if (digit >= 'a' && digit <= 'f')
        return static_cast<std::uint8_t>(digit - 'a' + 10);
    if (digit >= 'A' && digit <= 'F')
        return static_cast<std::uint8_t>(digit - 'A' + 10);
    return std::nullopt;
}

} // namespace

UUID UUID::random()
{
    UUID uuid;
    ::arc4random_buf(uuid.bytes_.data(), uuid.bytes_.size());
    uuid.bytes_[6] = static_cast<std::uint8_t>((uuid.bytes_[6] & 0x0F) | 0x40); // Version 4.
    uuid.bytes_[8] = static_cast<std::uint8_t>((uuid.bytes_[8] & 0x3F) | 0x80); // Variant 1.
    return uuid;
}

std::optional<UUID> UUID::parse(std::string_view text)
{
    if (text.size() != layout.size())
        return std::nullopt;
    UUID uuid;
    std::size_t nibble = 0;
    for (std::size_t i = 0; i < layout.size(); ++i) {
        if (layout[i] == '-') {
            if (text[i] != '-')
                return std::nullopt;
            continue;
        }
        const auto value = digitValue(text[i]);
        if (!value)
            return std::nullopt;
        auto& byte = uuid.bytes_[nibble / 2];
        byte = static_cast<std::uint8_t>(byte << 4 | *value);
        ++nibble;
    }
    return uuid;
}

std::string UUID::text() const
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text(layout);
    std::size_t nibble = 0;
    for (char& character : text) {
        if (character == '-')
            continue;
        const auto byte = bytes_[nibble / 2];
        character = digits[nibble % 2 == 0 ? byte >> 4 : byte & 0x0F];
        ++nibble;
    }
    return text;
}

} // namespace notch
