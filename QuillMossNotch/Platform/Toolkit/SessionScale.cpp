// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Toolkit/SessionScale.h"

#include "Platform/Display/X11.h"
#include "Platform/Display/XSettings.h"

#include <systemd/sd-bus.h>

#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace notch {

namespace {

constexpr std::uint32_t longestProperty = 1 << 16; // Words of four bytes.

// A connection of its own: the toolkit's comes too late.
class Display {
public:
    std::string property(xcb_window_t window, xcb_atom_t name) const
    {
        const auto asked =
            xcb_get_property(x(), 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, longestProperty);
        const x11::Reply<xcb_get_property_reply_t> reply(
            xcb_get_property_reply(x(), asked, nullptr));
        if (!reply)
            return {};
        return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
    }
    xcb_atom_t atom(std::string_view name) const
    {
        const auto asked =
            xcb_intern_atom(x(), 0, static_cast<std::uint16_t>(name.size()), name.data());
        const x11::Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(x(), asked, nullptr));
        return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }
    xcb_window_t owner(xcb_atom_t selection) const
    {
        const x11::Reply<xcb_get_selection_owner_reply_t> reply(
            xcb_get_selection_owner_reply(x(), xcb_get_selection_owner(x(), selection), nullptr));
        return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
    }
    xcb_window_t root() const { return xcb_setup_roots_iterator(xcb_get_setup(x())).data->root; }
    bool isOpen() const { return xcb_connection_has_error(x()) == 0; }

private:
    xcb_connection_t* x() const { return connection_.get(); }

    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection_{
        xcb_connect(nullptr, nullptr), xcb_disconnect};
};

bool toolkitKnows(const Display& display)
{
    const auto resources = display.property(display.root(), XCB_ATOM_RESOURCE_MANAGER);
    return resources.starts_with("Xft.dpi:") || resources.find("\nXft.dpi:") != std::string::npos;
}

std::optional<int> environmentsScale()
{
    const char* const text = std::getenv("GDK_SCALE");
    int scale = 0;
    if (!text || std::from_chars(text, text + std::strlen(text), scale).ec != std::errc())
        return std::nullopt;
    return scale;
}

std::optional<int> daemonsScale(const Display& display)
{
    const auto daemon = display.owner(display.atom("_XSETTINGS_S0"));
    if (daemon == XCB_WINDOW_NONE)
        return std::nullopt;
    const auto settings = display.property(daemon, display.atom("_XSETTINGS_SETTINGS"));
    return integerSetting(
        std::span(reinterpret_cast<const std::uint8_t*>(settings.data()), settings.size()),
        "Gdk/WindowScalingFactor");
}

// What org.gnome.Mutter.DisplayConfig has last in its state, after serial, monitors and logical
// monitors; mutter's own settings daemon takes it from there.
std::optional<int> scaleAmongProperties(sd_bus_message* state)
{
    constexpr const char* beforeProperties = "ua((ssss)a(siiddada{sv})a{sv})a(iiduba(ssss)a{sv})";
    if (sd_bus_message_skip(state, beforeProperties) < 0
        || sd_bus_message_enter_container(state, 'a', "{sv}") < 0)
        return std::nullopt;
    const char* name = nullptr;
    while (sd_bus_message_enter_container(state, 'e', "sv") > 0
           && sd_bus_message_read(state, "s", &name) > 0) {
        std::int32_t scale = 0;
        if (name == std::string_view("legacy-ui-scaling-factor"))
            return sd_bus_message_read(state, "v", "i", &scale) > 0 ? std::optional(scale)
                                                                    : std::nullopt;
        sd_bus_message_skip(state, "v");
        sd_bus_message_exit_container(state);
    }
    return std::nullopt;
}

std::optional<int> muttersScale()
{
    constexpr std::uint64_t patience = 500'000; // Microseconds.
    sd_bus* opened = nullptr;
    if (sd_bus_open_user(&opened) < 0)
        return std::nullopt;
    const std::unique_ptr<sd_bus, decltype(&sd_bus_flush_close_unref)> bus(
        opened, sd_bus_flush_close_unref);
    sd_bus_set_method_call_timeout(bus.get(), patience);
    sd_bus_message* answer = nullptr;
    sd_bus_call_method(bus.get(), "org.gnome.Mutter.DisplayConfig",
        "/org/gnome/Mutter/DisplayConfig", "org.gnome.Mutter.DisplayConfig", "GetCurrentState",
        nullptr, &answer, "");
    const std::unique_ptr<sd_bus_message, decltype(&sd_bus_message_unref)> state(
        answer, sd_bus_message_unref);
    return state ? scaleAmongProperties(state.get()) : std::nullopt;
}

} // namespace

int sessionScale()
{
    constexpr int largest = 4; // More is damage: nothing of the notch would fit.
    const Display display;
    if (!display.isOpen() || toolkitKnows(display))
        return 1;
    auto scale = environmentsScale();
    if (!scale)
        scale = daemonsScale(display);
    if (!scale)
        scale = muttersScale();
    return scale && *scale > 1 && *scale <= largest ? *scale : 1;
}

} // namespace notch
