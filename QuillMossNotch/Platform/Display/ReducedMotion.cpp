// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Display/ReducedMotion.h"

#include "Platform/Display/X11.h"
#include "Platform/Display/XSettings.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace notch {

namespace {

constexpr std::uint32_t longestProperty = 1 << 16; // Words of four bytes; real ones are some 500.

bool saysFewerMovements(const xcb_get_property_reply_t& property)
{
    const auto* bytes = static_cast<const std::uint8_t*>(xcb_get_property_value(&property));
    const auto length = static_cast<std::size_t>(xcb_get_property_value_length(&property));
    return integerSetting(std::span(bytes, length), "Gtk/EnableAnimations") == 0;
}

} // namespace

bool reduceMotion()
{
    auto* connection = x11::connection();
    if (!connection)
        return false;
    const auto daemon = x11::selectionOwner("_XSETTINGS_S0");
    if (daemon == XCB_WINDOW_NONE)
        return false;
    const auto cookie = xcb_get_property(connection, 0, daemon, x11::atom("_XSETTINGS_SETTINGS"),
        XCB_GET_PROPERTY_TYPE_ANY, 0, longestProperty);
    const x11::Reply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection, cookie, nullptr));
    return reply && saysFewerMovements(*reply);
}

} // namespace notch
