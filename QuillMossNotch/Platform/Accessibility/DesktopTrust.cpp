// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Accessibility/DesktopTrust.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace notch {
namespace {

const bus::Object launcher{"org.a11y.Bus", "/org/a11y/bus"};
const bus::Object daemon{"org.freedesktop.DBus", "/org/freedesktop/DBus"};
constexpr auto properties = "org.freedesktop.DBus.Properties";
constexpr auto status = "org.a11y.Status";
constexpr Seconds daemonPatience{0.5};
constexpr int mostMessages = 64; // Read at a time.

bool names(sd_bus* session, const char* method, const std::string& wanted)
{
    const auto reply = bus::call(
        session, bus::request(session, daemon, "org.freedesktop.DBus", method), daemonPatience);
    char** list = nullptr;
    if (!reply || sd_bus_message_read_strv(reply.get(), &list) < 0)
        return false;
    bool found = false;
    for (char** name = list; name && *name; ++name) {
        found = found || wanted == *name;
        std::free(*name);
    }
    std::free(list);
    return found;
}

} // namespace

bool DesktopTrust::isAvailable()
{
    const auto session = bus::session();
    return names(session.get(), "ListNames", launcher.owner)
        || names(session.get(), "ListActivatableNames", launcher.owner);
}

sd_bus* DesktopTrust::session()
{
    if (bus::isOpen(session_))
        return session_.get();
    session_ = bus::session();
    if (isWatching_)
        watch();
    return session_.get();
}

// The launcher's word, and its coming and going. Who else says so only costs a look.
void DesktopTrust::watch()
{
    for (const auto* rule : {
             "type='signal',path='/org/a11y/bus',interface='org.freedesktop.DBus.Properties',"
             "member='PropertiesChanged',arg0='org.a11y.Status'",
             "type='signal',sender='org.freedesktop.DBus',member='NameOwnerChanged',"
             "arg0='org.a11y.Bus'",
         })
        sd_bus_add_match_async(
            session_.get(), nullptr, rule,
            [](sd_bus_message*, void* changed, sd_bus_error*) {
                return *static_cast<bool*>(changed) = true, 0;
            },
            nullptr, &hasChanged_);
}

int DesktopTrust::changesDescriptor()
{
    if (!std::exchange(isWatching_, true) && session_)
        watch();
    auto* const bus = session();
    return bus ? sd_bus_get_fd(bus) : -1;
}

bool DesktopTrust::takeChanges()
{
    for (int i = 0; i < mostMessages; ++i)
        if (!session_ || sd_bus_process(session_.get(), nullptr) <= 0)
            return std::exchange(hasChanged_, false);
    return true; // There may be more.
}

bool DesktopTrust::isProcessTrusted()
{
    auto* const bus = session();
    const auto reply = bus::call(
        bus, bus::request(bus, launcher, properties, "Get", "ss", status, "IsEnabled"), patience_);
    int enabled = 0;
    return reply && sd_bus_message_read(reply.get(), "v", "b", &enabled) > 0 && enabled != 0;
}

void DesktopTrust::requestTrust()
{
    auto* const bus = session();
    bus::call(bus,
        bus::request(bus, launcher, properties, "Set", "ssv", status, "IsEnabled", "b", int{true}),
        patience_);
}

std::optional<std::string> DesktopTrust::address()
{
    auto* const bus = session();
    return bus::text(
        bus::call(bus, bus::request(bus, launcher, "org.a11y.Bus", "GetAddress"), patience_));
}

} // namespace notch
