// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Time.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <systemd/sd-bus.h>

// Thin ownership over sd-bus(3). A failed call is an empty message, from which nothing can be read.
namespace notch::bus {

struct Unref {
    void operator()(sd_bus* bus) const { sd_bus_close_unref(bus); }
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
    void operator()(sd_bus_slot* slot) const { sd_bus_slot_unref(slot); }
};
using Connection = std::unique_ptr<sd_bus, Unref>;
using Message = std::unique_ptr<sd_bus_message, Unref>;
using Slot = std::unique_ptr<sd_bus_slot, Unref>; // Destroying it cancels the call.

// An object of a program on the bus.
struct Object {
    std::string owner;
    std::string path;
};

constexpr std::uint64_t microseconds(Seconds time)
{
    return static_cast<std::uint64_t>(std::chrono::microseconds(1000000).count() * time.count());
}

Connection session();
Connection at(const std::string& address);
bool isOpen(const Connection& connection);

// A method call with its arguments; empty if it cannot be made. It starts no program.
template <class... Arguments>
Message request(sd_bus* bus, const Object& object, const char* interface, const char* method,
    const char* types = "", Arguments... arguments)
{
    sd_bus_message* made = nullptr;
    if (!bus
        || sd_bus_message_new_method_call(
               bus, &made, object.owner.c_str(), object.path.c_str(), interface, method)
               < 0)
        return {};
    Message message(made);
    if (*types != '\0' && sd_bus_message_append(made, types, arguments...) < 0)
        return {};
    return message;
}
// The answer; empty after the time-out, or if it is an error.
Message call(sd_bus* bus, const Message& request, Seconds timeout);

std::optional<std::string> text(const Message& reply, const char* type = "s");
// The text of a property, from the answer of Properties.Get.
std::optional<std::string> propertyText(const Message& reply);

} // namespace notch::bus
