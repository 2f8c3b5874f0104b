// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Display/KeyboardFocus.h"

#include "Platform/Display/X11.h"

namespace notch {

namespace {

// Under XWayland the compositor does: the server knows no native window that has the keyboard or
// could get it back.
bool serverRulesKeyboard()
{
    return x11::connection() && !x11::isXWayland();
}

xcb_window_t focused()
{
    const x11::Reply<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(
        x11::connection(), xcb_get_input_focus(x11::connection()), nullptr));
    return reply ? reply->focus : static_cast<xcb_window_t>(XCB_INPUT_FOCUS_POINTER_ROOT);
}

// False: the window is gone or not on the screen.
bool setFocus(xcb_window_t window, xcb_timestamp_t time)
{
    const auto cookie =
        xcb_set_input_focus_checked(x11::connection(), XCB_INPUT_FOCUS_POINTER_ROOT, window, time);
    return !x11::Reply<xcb_generic_error_t>(xcb_request_check(x11::connection(), cookie));
}

} // namespace

KeyboardFocus::KeyboardFocus(QWindow& window)
    : window_(window)
{
}

void KeyboardFocus::take(quint32 time)
{
    if (!serverRulesKeyboard())
        return;
    const auto window = static_cast<xcb_window_t>(window_.winId());
    const auto current = focused();
    if (current == window)
        return;
    previous_ = current;
    setFocus(window, time);
}

void KeyboardFocus::giveBack()
{
    if (!serverRulesKeyboard() || focused() != static_cast<xcb_window_t>(window_.winId()))
        return;
    if (!setFocus(previous_, XCB_CURRENT_TIME))
        setFocus(XCB_INPUT_FOCUS_POINTER_ROOT, XCB_CURRENT_TIME);
}

} // namespace notch
