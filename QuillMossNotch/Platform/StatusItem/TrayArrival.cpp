// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/StatusItem/TrayArrival.h"

#include <QSocketNotifier>

#include <systemd/sd-bus.h>

#include <utility>

namespace notch {

namespace {

// Freedesktop's StatusNotifierItem, as every desktop names it.
constexpr const char* watcher = "org.kde.StatusNotifierWatcher";
constexpr const char* watcherPath = "/StatusNotifierWatcher";
constexpr const char* watcherComes = "type='signal',sender='org.freedesktop.DBus',"
                                     "member='NameOwnerChanged',"
                                     "arg0='org.kde.StatusNotifierWatcher'";

sd_bus* sessionBus()
{
    sd_bus* bus = nullptr;
    return sd_bus_open_user(&bus) < 0 ? nullptr : bus;
}

} // namespace

TrayArrival::TrayArrival(std::function<void()> arrived)
    : arrived_(std::move(arrived))
    , dock_("_NET_SYSTEM_TRAY_S0", [this] { tell(); })
    , bus_(sessionBus(), sd_bus_flush_close_unref)
{
    if (dock_.isHeld())
        tell();
    else if (bus_)
        listen();
}

TrayArrival::~TrayArrival() = default;

// The watcher may come first and the host, which shows the icons, later.
void TrayArrival::listen()
{
    const auto changed = [](sd_bus_message*, void* self, sd_bus_error*) {
        static_cast<TrayArrival*>(self)->askForHost();
        return 0;
    };
    sd_bus_add_match_async(bus_.get(), nullptr, watcherComes, changed, nullptr, this);
    sd_bus_match_signal_async(bus_.get(), nullptr, watcher, watcherPath, watcher,
        "StatusNotifierHostRegistered", changed, nullptr, this);
    notifier_ = new QSocketNotifier(sd_bus_get_fd(bus_.get()), QSocketNotifier::Read, &context_);
    QObject::connect(notifier_, &QSocketNotifier::activated, &context_, [this] { processBus(); });
    askForHost();
    processBus();
}

void TrayArrival::askForHost()
{
    const auto answered = [](sd_bus_message* reply, void* self, sd_bus_error*) {
        int there = 0;
        if (sd_bus_message_read(reply, "v", "b", &there) > 0 && there != 0)
            static_cast<TrayArrival*>(self)->tell();
        return 0;
    };
    sd_bus_call_method_async(bus_.get(), nullptr, watcher, watcherPath,
        "org.freedesktop.DBus.Properties", "Get", answered, this, "ss", watcher,
        "IsStatusNotifierHostRegistered");
}

void TrayArrival::processBus()
{
    int handled = 1;
    while (handled > 0)
        handled = sd_bus_process(bus_.get(), nullptr);
    if (handled < 0 || sd_bus_flush(bus_.get()) < 0)
        notifier_->setEnabled(false); // The session ends.
}

void TrayArrival::tell()
{
    if (const auto arrived = std::exchange(arrived_, nullptr))
        QMetaObject::invokeMethod(&context_, arrived, Qt::QueuedConnection);
}

} // namespace notch
