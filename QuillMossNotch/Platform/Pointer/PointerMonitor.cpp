// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Pointer/PointerMonitor.h"

#include "Platform/Display/X11.h"

#include <QCoreApplication>

#include <xcb/xinput.h>

#include <utility>

namespace notch {

namespace {

// Every master device; XIAllDevices would deliver each event a second time for its slave.
constexpr xcb_input_device_id_t allMasters = XCB_INPUT_DEVICE_ALL_MASTER;
constexpr unsigned leftButton = 1;
constexpr unsigned rightButton = 3;
constexpr unsigned lastButton = 3; // Of those that are held to drag.

constexpr std::uint8_t sentEventBit = 0x80;

xcb_window_t createMarkWindow()
{
    auto* const connection = x11::connection();
    const xcb_window_t window = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, x11::root(), 0, 0, 1, 1, 0,
        XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    return window;
}

bool isWheelStep(unsigned button)
{
    return button >= 4 && button <= 7;
}

} // namespace

PointerMonitor::PointerMonitor(Handlers handlers)
    : handlers_(std::move(handlers))
{
    auto* connection = x11::connection();
    const auto* extension =
        connection ? xcb_get_extension_data(connection, &xcb_input_id) : nullptr;
    if (!extension || !extension->present)
        return;
    opcode_ = extension->major_opcode;
    markWindow_ = createMarkWindow();
    select(false);
    QCoreApplication::instance()->installNativeEventFilter(this);
}

PointerMonitor::~PointerMonitor()
{
    if (auto* application = QCoreApplication::instance())
        application->removeNativeEventFilter(this);
    if (markWindow_ != 0 && x11::connection())
        xcb_destroy_window(x11::connection(), markWindow_);
}

void PointerMonitor::select(bool motion) const
{
    struct {
        xcb_input_event_mask_t head{};
        std::uint32_t mask = 0;
    } events;
    events.head = {.deviceid = allMasters, .mask_len = 1};
    events.mask = XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS
                | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE
                | XCB_INPUT_XI_EVENT_MASK_RAW_TOUCH_BEGIN
                | (motion ? XCB_INPUT_XI_EVENT_MASK_RAW_MOTION : 0);
    xcb_input_xi_select_events(x11::connection(), x11::root(), 1, &events.head);
    xcb_flush(x11::connection());
}

bool PointerMonitor::nativeEventFilter(const QByteArray&, void* message, qintptr*)
{
    const auto* event = static_cast<xcb_ge_generic_event_t*>(message);
    if ((event->response_type & ~sentEventBit) == XCB_CLIENT_MESSAGE)
        handleMark(*static_cast<xcb_client_message_event_t*>(message));
    if (event->response_type != XCB_GE_GENERIC || event->extension != opcode_)
        return false;
    switch (event->event_type) {
    case XCB_INPUT_RAW_BUTTON_PRESS:
    case XCB_INPUT_RAW_BUTTON_RELEASE: {
        const auto* raw = reinterpret_cast<const xcb_input_raw_button_press_event_t*>(event);
        handleRaw(event->event_type, raw->detail, raw->time);
        break;
    }
    case XCB_INPUT_RAW_TOUCH_BEGIN:
        handlers_.pressed(reinterpret_cast<const xcb_input_raw_touch_begin_event_t*>(event)->time);
        break;
    case XCB_INPUT_RAW_MOTION:
        motion_ = Event::dragged;
        deliverLater();
        break;
    case XCB_INPUT_ENTER:
    case XCB_INPUT_LEAVE:
        motion_ = motion_.value_or(Event::moved);
        deliverLater();
        break;
    case XCB_INPUT_BUTTON_PRESS:
        // Delivered to one of our windows: the same press as the raw one before it.
        if (press_
            && press_->time == reinterpret_cast<const xcb_input_button_press_event_t*>(event)->time)
            press_.reset();
        break;
    }
    return false;
}

void PointerMonitor::handleRaw(unsigned type, unsigned button, quint32 time)
{
    if (type == XCB_INPUT_RAW_BUTTON_PRESS && !isWheelStep(button))
        handlers_.pressed(time);
    if (button < leftButton || button > lastButton)
        return;
    const bool wasHeld = held_ != 0;
    if (type == XCB_INPUT_RAW_BUTTON_PRESS)
        held_ |= 1U << button;
    else
        held_ &= ~(1U << button);
    if (wasHeld != (held_ != 0))
        select(held_ != 0);
    if (type != XCB_INPUT_RAW_BUTTON_PRESS || (button != leftButton && button != rightButton))
        return;
    press_ = Press{button == leftButton ? Event::leftDown : Event::rightDown, time};
    askForMark(time);
}

// Whether a press is for one of our windows shows only in the event after it, which may be read
// later. What this process sends to itself now comes after that one.
void PointerMonitor::askForMark(quint32 time) const
{
    xcb_client_message_event_t mark{};
    mark.response_type = XCB_CLIENT_MESSAGE;
    mark.format = 32;
    mark.window = markWindow_;
    mark.data.data32[0] = time;
    xcb_send_event(x11::connection(), 0, markWindow_, XCB_EVENT_MASK_NO_EVENT,
        reinterpret_cast<const char*>(&mark));
    xcb_flush(x11::connection());
}

void PointerMonitor::handleMark(const xcb_client_message_event_t& mark)
{
    if (mark.window != markWindow_ || !press_ || press_->time != mark.data.data32[0])
        return;
    pressElsewhere_ = press_->event;
    press_.reset();
    deliverLater();
}

void PointerMonitor::deliverLater()
{
    if (!std::exchange(queued_, true))
        QMetaObject::invokeMethod(
            &context_, [this] { deliver(); }, Qt::QueuedConnection);
}

void PointerMonitor::deliver()
{
    queued_ = false;
    const auto motion = std::exchange(motion_, std::nullopt);
    const auto press = std::exchange(pressElsewhere_, std::nullopt);
    if (motion)
        handlers_.elsewhere(*motion);
    if (press)
        handlers_.elsewhere(*press);
}

} // namespace notch
