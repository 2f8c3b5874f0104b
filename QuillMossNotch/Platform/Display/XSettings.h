// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace notch {

// One integer of the settings that a session's daemon publishes as the property
// _XSETTINGS_SETTINGS (freedesktop.org, "XSETTINGS - cross toolkit configuration proposal").
// Nothing if it is not there or the bytes are damaged.
std::optional<std::int32_t> integerSetting(
    std::span<const std::uint8_t> property, std::string_view name);

} // namespace notch
