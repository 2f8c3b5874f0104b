// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Display/ServerClock.h"

#include "Platform/Display/X11.h"

namespace notch {

namespace {

constexpr std::uint8_t sentEventBit = 0x80;

xcb_window_t createWindow(xcb_connection_t* connection)
{
    const xcb_window_t window = xcb_generate_id(connection);
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, root, 0, 0, 1, 1, 0,
        XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    return window;
}

void awaitToolkitsRequests()
{
    auto* const connection = x11::connection();
    const x11::Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

} // namespace

void ServerClock::Disconnect::operator()(xcb_connection_t* connection) const
{
    xcb_disconnect(connection);
}

ServerClock::ServerClock()
{
    if (!x11::connection())
        return;
    connection_.reset(xcb_connect(nullptr, nullptr));
    if (xcb_connection_has_error(connection_.get()) != 0)
        connection_.reset();
    else
        window_ = createWindow(connection_.get());
}

ServerClock::~ServerClock() = default;

// A change that changes nothing is answered by an event with the server's time.
std::optional<quint32> ServerClock::now() const
{
    auto* const connection = connection_.get();
    if (!connection)
        return std::nullopt;
    awaitToolkitsRequests();
    xcb_change_property(connection, XCB_PROP_MODE_APPEND, window_, XCB_ATOM_WM_NAME,
        XCB_ATOM_STRING, 8, 0, nullptr);
    xcb_flush(connection);
    while (const x11::Reply<xcb_generic_event_t> event{xcb_wait_for_event(connection)}) {
        if ((event->response_type & ~sentEventBit) == XCB_PROPERTY_NOTIFY)
            return reinterpret_cast<const xcb_property_notify_event_t&>(*event).time;
    }
    return std::nullopt; // The server is gone.
}

} // namespace notch
