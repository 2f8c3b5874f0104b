// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "support/desktop/XInput.h"

#include <cstdlib>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

namespace notch {

namespace {

constexpr std::uint8_t escapeKeycode = 9; // Of every evdev keyboard layout.

} // namespace

void XInput::Close::operator()(xcb_connection_t* connection) const
{
    xcb_disconnect(connection);
}

XInput::XInput()
    : connection_(xcb_connect(nullptr, nullptr))
{
}

bool XInput::isConnected() const
{
    return xcb_connection_has_error(connection_.get()) == 0;
}

void XInput::send(std::uint8_t type, std::uint8_t detail, int x, int y)
{
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(connection_.get())).data->root;
    xcb_test_fake_input(connection_.get(), type, detail, XCB_CURRENT_TIME, root,
        static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
    focusedWindow(); // Any reply: requests are done in order.
}

void XInput::moveTo(int x, int y)
{
    send(XCB_MOTION_NOTIFY, 0, x, y);
}
void XInput::press()
{
    send(XCB_BUTTON_PRESS, XCB_BUTTON_INDEX_1);
}
void XInput::release()
{
    send(XCB_BUTTON_RELEASE, XCB_BUTTON_INDEX_1);
}

void XInput::clickAt(int x, int y)
{
    moveTo(x, y);
    press();
    release();
}

void XInput::typeEscape()
{
    send(XCB_KEY_PRESS, escapeKeycode);
    send(XCB_KEY_RELEASE, escapeKeycode);
}

std::uint32_t XInput::focusedWindow()
{
    auto* const reply = xcb_get_input_focus_reply(
        connection_.get(), xcb_get_input_focus(connection_.get()), nullptr);
    const std::uint32_t focus = reply ? reply->focus : XCB_NONE;
    std::free(reply);
    return focus;
}

} // namespace notch
