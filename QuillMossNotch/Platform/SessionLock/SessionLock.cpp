// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/SessionLock/SessionLock.h"

#include <QSocketNotifier>

#include <systemd/sd-bus.h>

#include <string_view>
#include <utility>

namespace notch {

namespace {

constexpr const char* lockChanges = "type='signal',member='ActiveChanged'";
// org.freedesktop.ScreenSaver, and the desktops' own interfaces are alike.
constexpr std::string_view lockInterfaces = ".ScreenSaver";

sd_bus* sessionBus()
{
    sd_bus* bus = nullptr;
    return sd_bus_open_user(&bus) < 0 ? nullptr : bus;
}

std::string text(const char* given)
{
    return given ? given : "";
}

bool saysActive(sd_bus_message* message)
{
    int active = 0;
    return sd_bus_message_is_method_error(message, nullptr) == 0
        && sd_bus_message_read(message, "b", &active) > 0 && active != 0;
}

} // namespace

SessionLock::SessionLock(std::function<void()> changed, std::chrono::milliseconds askEvery)
    : changed_(std::move(changed))
    , bus_(sessionBus(), sd_bus_flush_close_unref)
    , question_(nullptr, sd_bus_slot_unref)
{
    if (!bus_)
        return;
    asking_.setInterval(askEvery);
    QObject::connect(&asking_, &QTimer::timeout, &asking_, [this] { ask(); });
    const auto hear = [](sd_bus_message* signal, void* self, sd_bus_error*) {
        static_cast<SessionLock*>(self)->heard(signal);
        return 0;
    };
    sd_bus_add_match_async(bus_.get(), nullptr, lockChanges, hear, nullptr, this);
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
    if (handled >= 0 && sd_bus_flush(bus_.get()) >= 0)
        return;
    notifier_->setEnabled(false); // The session ends.
    unlock();
}

void SessionLock::heard(sd_bus_message* signal)
{
    const Locker locker{
        .name = text(sd_bus_message_get_sender(signal)),
        .path = text(sd_bus_message_get_path(signal)),
        .interface = text(sd_bus_message_get_interface(signal)),
    };
    if (!locker.interface.ends_with(lockInterfaces))
        return;
    asking_.stop();
    question_.reset();
    if (saysActive(signal)) {
        locker_ = locker;
        asking_.start();
    }
    changed_();
}

void SessionLock::ask()
{
    const auto hear = [](sd_bus_message* answer, void* self, sd_bus_error*) {
        static_cast<SessionLock*>(self)->answered(answer);
        return 0;
    };
    sd_bus_slot* question = nullptr;
    if (!question_)
        sd_bus_call_method_async(bus_.get(), &question, locker_.name.c_str(), locker_.path.c_str(),
            locker_.interface.c_str(), "GetActive", hear, this, "");
    question_.reset(question);
    if (question_)
        processBus();
    else
        unlock();
}

void SessionLock::answered(sd_bus_message* answer)
{
    question_.reset();
    if (!saysActive(answer))
        unlock();
}

void SessionLock::unlock()
{
    if (!isLocked())
        return;
    asking_.stop();
    changed_();
}

} // namespace notch
