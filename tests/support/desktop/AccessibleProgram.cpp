// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "support/desktop/AccessibleProgram.h"

#include "support/WaitUntil.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <systemd/sd-bus.h>
#include <utility>

namespace notch {

namespace {

constexpr const char* accessible = "org.a11y.atspi.Accessible";

// AtspiStateType, the bits of GetState.
constexpr int stateEnabled = 8;
constexpr int stateFocused = 12;
constexpr int stateShowing = 25;

struct Node {
    std::string program; // Its name on the bus.
    std::string path;
};

struct Unref {
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using Reply = std::unique_ptr<sd_bus_message, Unref>;

sd_bus* open()
{
    sd_bus* session = nullptr;
    sd_bus_message* reply = nullptr;
    const char* address = nullptr;
    sd_bus* bus = nullptr;
    if (sd_bus_open_user(&session) >= 0
        && sd_bus_call_method(session, "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus",
               "GetAddress", nullptr, &reply, "")
               >= 0
        && sd_bus_message_read(reply, "s", &address) >= 0 && sd_bus_new(&bus) >= 0) {
        sd_bus_set_address(bus, address);
        sd_bus_set_bus_client(bus, 1);
        sd_bus_set_method_call_timeout(bus, 1'000'000);
        if (sd_bus_start(bus) < 0)
            bus = sd_bus_unref(bus);
    }
    sd_bus_message_unref(reply);
    sd_bus_flush_close_unref(session);
    return bus;
}

Reply call(sd_bus* bus, const Node& node, const char* interface, const char* method)
{
    sd_bus_message* reply = nullptr;
    sd_bus_call_method(
        bus, node.program.c_str(), node.path.c_str(), interface, method, nullptr, &reply, "");
    return Reply(reply);
}

std::vector<Node> children(sd_bus* bus, const Node& node)
{
    std::vector<Node> found;
    const auto reply = call(bus, node, accessible, "GetChildren");
    if (!reply || sd_bus_message_enter_container(reply.get(), 'a', "(so)") < 0)
        return found;
    const char* program = nullptr;
    const char* path = nullptr;
    while (sd_bus_message_read(reply.get(), "(so)", &program, &path) > 0)
        found.push_back({program, path});
    return found;
}

std::string nameOf(sd_bus* bus, const Node& node)
{
    char* text = nullptr;
    sd_bus_get_property_string(
        bus, node.program.c_str(), node.path.c_str(), accessible, "Name", nullptr, &text);
    std::string name = text ? text : "";
    std::free(text);
    return name;
}

std::string roleOf(sd_bus* bus, const Node& node)
{
    const auto reply = call(bus, node, accessible, "GetRoleName");
    const char* role = "";
    if (reply)
        sd_bus_message_read(reply.get(), "s", &role);
    return role;
}

std::uint64_t statesOf(sd_bus* bus, const Node& node)
{
    const auto reply = call(bus, node, accessible, "GetState");
    std::uint32_t low = 0;
    std::uint32_t high = 0;
    if (!reply || sd_bus_message_read(reply.get(), "au", 2, &low, &high) < 0)
        return 0;
    return low | static_cast<std::uint64_t>(high) << 32;
}

void readMiddle(sd_bus* bus, const Node& node, AccessibleControl& control)
{
    constexpr std::uint32_t ofScreen = 0; // ATSPI_COORD_TYPE_SCREEN
    sd_bus_message* answer = nullptr;
    sd_bus_call_method(bus, node.program.c_str(), node.path.c_str(), "org.a11y.atspi.Component",
        "GetExtents", nullptr, &answer, "u", ofScreen);
    const Reply reply(answer);
    std::array<int, 4> rect{};
    if (reply)
        sd_bus_message_read(reply.get(), "(iiii)", &rect[0], &rect[1], &rect[2], &rect[3]);
    control.x = rect[0] + rect[2] / 2;
    control.y = rect[1] + rect[3] / 2;
}

AccessibleControl read(sd_bus* bus, const Node& node, std::string name)
{
    const auto states = statesOf(bus, node);
    const auto has = [&](int state) { return (states >> state & 1) != 0; };
    AccessibleControl control{
        .name = std::move(name),
        .role = roleOf(bus, node),
        .isEnabled = has(stateEnabled),
        .isShowing = has(stateShowing),
        .isFocused = has(stateFocused),
    };
    readMiddle(bus, node, control);
    return control;
}

void collect(sd_bus* bus, const Node& node, std::vector<AccessibleControl>& controls)
{
    for (const auto& child : children(bus, node)) {
        if (auto name = nameOf(bus, child); !name.empty())
            controls.push_back(read(bus, child, std::move(name)));
        collect(bus, child, controls);
    }
}

} // namespace

void AccessibleProgram::Close::operator()(sd_bus* bus) const
{
    sd_bus_flush_close_unref(bus);
}

AccessibleProgram::AccessibleProgram(std::string name)
    : name_(std::move(name))
    , bus_(open())
{
}

std::vector<AccessibleControl> AccessibleProgram::controls() const
{
    std::vector<AccessibleControl> found;
    const Node desktop{"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"};
    if (!bus_)
        return found;
    for (const auto& program : children(bus_.get(), desktop))
        if (nameOf(bus_.get(), program) == name_)
            collect(bus_.get(), program, found);
    return found;
}

std::optional<AccessibleControl> AccessibleProgram::showing(const std::string& control) const
{
    for (auto& candidate : controls())
        if (candidate.isShowing && candidate.name == control)
            return std::move(candidate);
    return std::nullopt;
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
