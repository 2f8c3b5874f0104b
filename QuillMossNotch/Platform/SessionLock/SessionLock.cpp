// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/SessionLock/SessionLock.h"

#include <QSocketNotifier>

#include <systemd/sd-bus.h>

#include <utility>

namespace notch {

namespace {

// org.freedesktop.ScreenSaver and the desktops' own interfaces all call the signal this.
constexpr const char* lockChanges = "type='signal',member='ActiveChanged'";

sd_bus* sessionBus()
{
    sd_bus* bus = nullptr;
    return sd_bus_open_user(&bus) < 0 ? nullptr : bus;
}

} // namespace

SessionLock::SessionLock(std::function<void()> changed)
    : changed_(std::move(changed))
    , bus_(sessionBus(), sd_bus_flush_close_unref)
{
    if (!bus_)
        return;
    const auto heard = [](sd_bus_message*, void* self, sd_bus_error*) {
        static_cast<SessionLock*>(self)->changed_();
        return 0;
    };
    sd_bus_add_match_async(bus_.get(), nullptr, lockChanges, heard, nullptr, this);
    notifier_ = std::make_unique<QSocketNotifier>(sd_bus_get_fd(bus_.get()), QSocketNotifier::Read);
    QObject::connect(
        notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { processBus(); });
    processBus();
}

SessionLock::~SessionLock() = default;

void SessionLock::processBus()
{
    int handled = 1;
    while (handled > 0)
        handled = sd_bus_process(bus_.get(), nullptr);
    if (handled < 0 || sd_bus_flush(bus_.get()) < 0)
        notifier_->setEnabled(false); // The session ends.
}

} // namespace notch
