// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Accessibility/Bus.h"

namespace notch::bus {
namespace {

constexpr std::uint64_t connectTimeout = 500'000; // Microseconds, for a bus that does not answer.

} // namespace

Connection session()
{
    sd_bus* opened = nullptr;
    return Connection(sd_bus_open_user(&opened) < 0 ? nullptr : opened);
}

Connection at(const std::string& address)
{
    sd_bus* made = nullptr;
    if (sd_bus_new(&made) < 0)
        return {};
    Connection connection(made);
    if (sd_bus_set_address(made, address.c_str()) < 0 || sd_bus_set_bus_client(made, 1) < 0
        || sd_bus_set_method_call_timeout(made, connectTimeout) < 0 || sd_bus_start(made) < 0)
        return {};
    return connection;
}

bool isOpen(const Connection& connection)
{
    return connection && sd_bus_is_open(connection.get()) > 0;
}

Message call(sd_bus* bus, const Message& request, Seconds timeout)
{
    sd_bus_message* reply = nullptr;
    // A time-out of 0 would be the library's own, which is long.
    if (!bus || !request || timeout <= Seconds{0}
        || sd_bus_call(bus, request.get(), microseconds(timeout) + 1, nullptr, &reply) < 0)
        return {};
    return Message(reply);
}

std::optional<std::string> text(const Message& reply, const char* type)
{
    const char* read = nullptr;
    if (!reply || sd_bus_message_read_basic(reply.get(), *type, &read) <= 0)
        return std::nullopt;
    return read;
}

std::optional<std::string> propertyText(const Message& reply)
{
    if (!reply || sd_bus_message_enter_container(reply.get(), 'v', "s") <= 0)
        return std::nullopt;
    return text(reply);
}

} // namespace notch::bus
