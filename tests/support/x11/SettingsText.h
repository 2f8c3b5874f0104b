// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace notch {

// An XSETTINGS property, little-endian, as a settings daemon would publish it.
class SettingsText {
public:
    SettingsText& integer(std::string_view name, std::int32_t value)
    {
        head(0, name);
        number(static_cast<std::uint32_t>(value), 4);
        return *this;
    }
    SettingsText& text(std::string_view name, std::string_view value)
    {
        head(1, name);
        number(static_cast<std::uint32_t>(value.size()), 4);
        padded(value);
        return *this;
    }
    SettingsText& colour(std::string_view name)
    {
        head(2, name);
        number(0, 8);
        return *this;
    }
    std::vector<std::uint8_t> bytes() const
    {
        constexpr std::size_t headBytes = 12;
        std::vector<std::uint8_t> all(headBytes + bytes_.size());
        all[4] = 1; // The serial number.
        all[8] = count_;
        std::ranges::copy(bytes_, all.begin() + headBytes);
        return all;
    }

private:
    void head(std::uint8_t type, std::string_view name)
    {
        ++count_;
        number(type, 2);
        number(static_cast<std::uint32_t>(name.size()), 2);
        padded(name);
        number(1, 4);
    }
    void number(std::uint32_t value, int size)
    {
        for (int i = 0; i < size; ++i, value >>= 8)
            bytes_.push_back(static_cast<std::uint8_t>(value & 0xFF));
    }
    void padded(std::string_view text)
    {
        bytes_.insert(bytes_.end(), text.begin(), text.end());
        bytes_.resize((bytes_.size() + 3) / 4 * 4);
    }

    std::vector<std::uint8_t> bytes_;
    std::uint8_t count_ = 0;
};

} // namespace notch
