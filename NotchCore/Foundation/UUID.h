// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace notch {

// A UUID (RFC 4122), compared as a value. A default-constructed one is all zero and never random.
class UUID {
public:
    UUID() = default;

    // A fresh version 4 UUID.
    static UUID random();
    // 8-4-4-4-12 hexadecimal digits in either case; nothing for any other text.
    static std::optional<UUID> parse(std::string_view text);

    // Canonical text in upper case.
    std::string text() const;

    friend auto operator<=>(const UUID&, const UUID&) = default;

private:
    std::array<std::uint8_t, 16> bytes_{};
};

} // namespace notch
