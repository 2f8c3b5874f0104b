// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "support/WaitUntil.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <systemd/sd-bus.h>
#include <utility>
#include <vector>

namespace notch {

// Something that a person can see or press, as a screen reader is told of it (AT-SPI 2).
struct AccessibleControl {
    bool isEnabled = false;
    int x = 0; // The middle, in pixels of the screen.
    int y = 0;
    enum class Role : std::uint32_t { other = 0, dialog = 16, window = 23 } role = Role::other;
    // Where it is found again, also when it shows no more.
    std::string program; // Its name on the bus.
    std::string path;

    bool operator==(const AccessibleControl&) const = default;
};

// One program of this session, read through the accessibility bus from fakes. A program that does
// not run, or answers nothing, has no controls.
class AccessibleProgram {
public:
    explicit AccessibleProgram(std::string name)
        : name_(std::move(name))
        , bus_(open(), sd_bus_flush_close_unref)
    {
    }

    // The first showing one of that name, from the top.
    std::optional<AccessibleControl> showing(const std::string& control) const
    {
        const Node desktop{"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"};
        std::optional<AccessibleControl> found;
        for (const auto& program : children(desktop))
            if (!found && isNamed(program, name_))
                found = find(program, control);
        return found;
    }
    // The same, asking again until `condition` holds for it; nothing after ten seconds.
    std::optional<AccessibleControl> waitFor(const std::string& control,
        const std::function<bool(const AccessibleControl&)>& condition = {}) const
    {
        std::optional<AccessibleControl> found;
        const bool came = waitUntil([&] {
            found = showing(control);
            return found && (!condition || condition(*found));
        });
        return came ? found : std::nullopt;
    }

    // A screen reader's action on it, say a button's press; returns when it has been handled.
    void act(const AccessibleControl& control) const
    {
        call(bus_.get(), {control.program, control.path}, "org.a11y.atspi.Action", "DoAction", "i",
            0);
    }

    // What a reader speaks whoever has the keyboard: the next notification of this program that
    // comes into view after the first call; nothing after ten seconds. That one listens only.
    std::optional<std::string> announcement()
    {
        if (!std::exchange(listens_, true)) {
            sd_bus_add_match(bus_.get(), nullptr,
                "type='signal',interface='org.a11y.atspi.Event.Object',member='StateChanged'",
                nullptr, nullptr);
            call(bus_.get(), {"org.a11y.atspi.Registry", "/org/a11y/atspi/registry"},
                "org.a11y.atspi.Registry", "RegisterEvent", "sass", "object:state-changed:showing",
                0, "");
            return std::nullopt;
        }
        std::optional<std::string> heard;
        waitUntil([&] {
            sd_bus_message* event = nullptr;
            while (!heard && sd_bus_process(bus_.get(), &event) > 0) {
                const Reply held(event, sd_bus_message_unref);
                heard = event ? spoken(event) : std::nullopt;
                event = nullptr;
            }
            return heard.has_value();
        });
        return heard;
    }

private:
    struct Node {
        std::string program; // Its name on the bus.
        std::string path;
    };
    using Reply = std::shared_ptr<sd_bus_message>;

    static constexpr const char* accessible = "org.a11y.atspi.Accessible";

    static sd_bus* open()
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

    // Null, of which nothing can be read, when there is no answer.
    template <class... Arguments>
    static Reply call(sd_bus* bus, const Node& node, const char* interface, const char* method,
        const char* types = "", Arguments... arguments)
    {
        sd_bus_message* reply = nullptr;
        sd_bus_call_method(bus, node.program.c_str(), node.path.c_str(), interface, method, nullptr,
            &reply, types, arguments...);
        return {reply, sd_bus_message_unref};
    }

    std::vector<Node> children(const Node& node) const
    {
        std::vector<Node> found;
        const auto reply = call(bus_.get(), node, accessible, "GetChildren");
        sd_bus_message_enter_container(reply.get(), 'a', "(so)");
        const char* program = nullptr;
        const char* path = nullptr;
        while (sd_bus_message_read(reply.get(), "(so)", &program, &path) > 0)
            found.push_back({program, path});
        return found;
    }

    std::optional<std::string> nameOf(const Node& node) const
    {
        const char* text = nullptr;
        const auto reply = call(
            bus_.get(), node, "org.freedesktop.DBus.Properties", "Get", "ss", accessible, "Name");
        return sd_bus_message_read(reply.get(), "v", "s", &text) > 0 ? std::optional(text)
                                                                     : std::nullopt;
    }
    bool isNamed(const Node& node, const std::string& name) const { return nameOf(node) == name; }

    std::uint32_t roleOf(const Node& node) const
    {
        std::uint32_t role = 0;
        const auto reply = call(bus_.get(), node, accessible, "GetRole");
        sd_bus_message_read(reply.get(), "u", &role);
        return role;
    }

    // Nothing for an event that is not a notification's coming into view.
    std::optional<std::string> spoken(sd_bus_message* event) const
    {
        constexpr std::uint32_t notification = 101; // ATSPI_ROLE_NOTIFICATION
        const char* state = nullptr;
        int on = 0;
        if (sd_bus_message_is_signal(event, "org.a11y.atspi.Event.Object", "StateChanged") <= 0
            || sd_bus_message_read(event, "si", &state, &on) <= 0 || state != std::string("showing")
            || on == 0)
            return std::nullopt;
        const Node source{sd_bus_message_get_sender(event), sd_bus_message_get_path(event)};
        return roleOf(source) == notification ? nameOf(source) : std::nullopt;
    }

    std::optional<AccessibleControl> find(const Node& node, const std::string& name) const
    {
        for (const auto& child : children(node)) {
            auto found = isNamed(child, name) ? read(child) : std::nullopt;
            if (found || (found = find(child, name)))
                return found;
        }
        return std::nullopt;
    }

    // Nothing for what is not showing.
    std::optional<AccessibleControl> read(const Node& node) const
    {
        // AtspiStateType, the bits of GetState.
        constexpr std::uint32_t enabled = 1U << 8;
        constexpr std::uint32_t showing = 1U << 25;
        constexpr std::uint32_t ofScreen = 0; // ATSPI_COORD_TYPE_SCREEN
        std::uint32_t states[2] = {};
        int area[4] = {};
        const auto state = call(bus_.get(), node, accessible, "GetState");
        sd_bus_message_read(state.get(), "au", 2, &states[0], &states[1]);
        const auto extents =
            call(bus_.get(), node, "org.a11y.atspi.Component", "GetExtents", "u", ofScreen);
        sd_bus_message_read(extents.get(), "(iiii)", &area[0], &area[1], &area[2], &area[3]);
        if ((states[0] & showing) == 0)
            return std::nullopt;
        return AccessibleControl{(states[0] & enabled) != 0, area[0] + area[2] / 2,
            area[1] + area[3] / 2, AccessibleControl::Role{roleOf(node)}, node.program, node.path};
    }

    std::string name_;
    std::shared_ptr<sd_bus> bus_; // Null: there is no such bus.
    bool listens_ = false;
};

} // namespace notch
