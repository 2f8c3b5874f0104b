// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "support/desktop/AccessibleProgram.h"

#include "support/WaitUntil.h"

#include <cstdint>
#include <systemd/sd-bus.h>
#include <utility>
#include <vector>

namespace notch {

namespace {

constexpr const char* accessible = "org.a11y.atspi.Accessible";

struct Node {
    std::string program; // Its name on the bus.
    std::string path;
};

using Reply = std::shared_ptr<sd_bus_message>;

// Null, of which nothing can be read, when there is no answer.
template <class... Arguments>
Reply call(sd_bus* bus, const Node& node, const char* interface, const char* method,
    const char* types = "", Arguments... arguments)
{
    sd_bus_message* reply = nullptr;
    sd_bus_call_method(bus, node.program.c_str(), node.path.c_str(), interface, method, nullptr,
        &reply, types, arguments...);
    return {reply, sd_bus_message_unref};
}

sd_bus* open()
{
    sd_bus* session = nullptr;
    sd_bus* bus = nullptr;
    const char* address = nullptr;
    sd_bus_open_user(&session);
    const auto reply =
        call(session, {"org.a11y.Bus", "/org/a11y/bus"}, "org.a11y.Bus", "GetAddress");
    if (sd_bus_message_read(reply.get(), "s", &address) >= 0 && sd_bus_new(&bus) >= 0) {
        sd_bus_set_address(bus, address);
        sd_bus_set_bus_client(bus, 1);
        sd_bus_set_method_call_timeout(bus, 1'000'000);
        if (sd_bus_start(bus) < 0)
            bus = sd_bus_unref(bus);
    }
    sd_bus_flush_close_unref(session);
    return bus;
}

std::vector<Node> children(sd_bus* bus, const Node& node)
{
    std::vector<Node> found;
    const auto reply = call(bus, node, accessible, "GetChildren");
    sd_bus_message_enter_container(reply.get(), 'a', "(so)");
    const char* program = nullptr;
    const char* path = nullptr;
    while (sd_bus_message_read(reply.get(), "(so)", &program, &path) > 0)
        found.push_back({program, path});
    return found;
}

bool isNamed(sd_bus* bus, const Node& node, const std::string& name)
{
    const char* text = nullptr;
    const auto reply =
        call(bus, node, "org.freedesktop.DBus.Properties", "Get", "ss", accessible, "Name");
    return sd_bus_message_read(reply.get(), "v", "s", &text) > 0 && name == text;
}

// Nothing for what is not showing.
std::optional<AccessibleControl> read(sd_bus* bus, const Node& node)
{
    // AtspiStateType, the bits of GetState.
    constexpr std::uint32_t enabled = 1U << 8;
    constexpr std::uint32_t showing = 1U << 25;
    constexpr std::uint32_t ofScreen = 0; // ATSPI_COORD_TYPE_SCREEN
    std::uint32_t states[2] = {};
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    const auto state = call(bus, node, accessible, "GetState");
    sd_bus_message_read(state.get(), "au", 2, &states[0], &states[1]);
    const auto extents = call(bus, node, "org.a11y.atspi.Component", "GetExtents", "u", ofScreen);
    sd_bus_message_read(extents.get(), "(iiii)", &x, &y, &width, &height);
    if ((states[0] & showing) == 0)
        return std::nullopt;
    return AccessibleControl{(states[0] & enabled) != 0, x + width / 2, y + height / 2};
}

// From the top.
std::optional<AccessibleControl> find(sd_bus* bus, const Node& node, const std::string& name)
{
    for (const auto& child : children(bus, node)) {
        auto found = isNamed(bus, child, name) ? read(bus, child) : std::nullopt;
        if (found || (found = find(bus, child, name)))
            return found;
    }
    return std::nullopt;
}

} // namespace

AccessibleProgram::AccessibleProgram(std::string name)
    : name_(std::move(name))
    , bus_(open(), sd_bus_flush_close_unref)
{
}

std::optional<AccessibleControl> AccessibleProgram::showing(const std::string& control) const
{
    const Node desktop{"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"};
    std::optional<AccessibleControl> found;
    for (const auto& program : children(bus_.get(), desktop))
        if (!found && isNamed(bus_.get(), program, name_))
            found = find(bus_.get(), program, control);
    return found;
}

std::optional<AccessibleControl> AccessibleProgram::waitFor(
    const std::string& control, const Condition& condition) const
{
    std::optional<AccessibleControl> found;
    const bool came = waitUntil([&] {
        found = showing(control);
        return found && (!condition || condition(*found));
    });
    return came ? found : std::nullopt;
}

} // namespace notch
