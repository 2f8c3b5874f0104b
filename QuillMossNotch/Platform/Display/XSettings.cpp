// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Display/XSettings.h"

#include <bit>
#include <cstddef>

namespace notch {

namespace {

enum class Type : std::uint8_t { integer, text, colour };

// Reads front to back; once it has run past the end, everything that it returns is zero.
class Cursor {
public:
    explicit Cursor(std::span<const std::uint8_t> bytes)
        : rest_(bytes)
    {
    }

    bool failed() const { return failed_; }
    void setLittleEndian(bool little) { little_ = little; }

    std::span<const std::uint8_t> take(std::size_t count)
    {
        if (count > rest_.size()) {
            failed_ = true;
            rest_ = {};
            return {};
        }
        const auto taken = rest_.first(count);
        rest_ = rest_.subspan(count);
        return taken;
    }

    std::uint32_t number(std::size_t size)
    {
        const auto bytes = take(size);
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < bytes.size(); ++i)
            value = value << 8 | bytes[little_ ? bytes.size() - 1 - i : i];
        return value;
    }

    // Texts fill up to a multiple of four bytes.
    std::string_view text(std::size_t length)
    {
        const auto bytes = take(length);
        take((4 - length % 4) % 4);
        return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
    }

private:
    std::span<const std::uint8_t> rest_;
    bool little_ = true;
    bool failed_ = false;
};

void skipValue(Cursor& cursor, Type type)
{
    switch (type) {
    case Type::integer:
        cursor.take(4);
        return;
    case Type::text:
        cursor.text(cursor.number(4));
        return;
    case Type::colour:
        cursor.take(8);
        return;
    }
    cursor.take(SIZE_MAX); // An unknown type has an unknown length.
}

} // namespace

std::optional<std::int32_t> integerSetting(
    std::span<const std::uint8_t> property, std::string_view name)
{
    Cursor cursor(property);
    cursor.setLittleEndian(cursor.number(1) == 0);
    cursor.take(3 + 4); // Padding, serial.
    const auto count = cursor.number(4);
    for (std::uint32_t i = 0; i < count && !cursor.failed(); ++i) {
        const auto type = static_cast<Type>(cursor.number(1));
        cursor.take(1);
        const auto found = cursor.text(cursor.number(2));
        cursor.take(4); // The serial of its last change.
        if (found != name || type != Type::integer) {
            skipValue(cursor, type);
            continue;
        }
        const auto value = static_cast<std::int32_t>(cursor.number(4));
        return cursor.failed() ? std::nullopt : std::optional(value);
    }
    return std::nullopt;
}

} // namespace notch
