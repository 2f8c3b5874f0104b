// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Workspace/ClientWindows.h"

#include "Platform/Display/X11.h"

#include <algorithm>
#include <string_view>
#include <strings.h>
#include <vector>
#include <xcb/xcb.h>
#include <xcb/xcb_ewmh.h>

namespace notch {

namespace {

using Window = ClientWindows::Window;

// The atoms' names and screens of one connection.
class Ewmh {
public:
    explicit Ewmh(xcb_connection_t* connection)
        : ready_(xcb_ewmh_init_atoms_replies(
            &connection_, xcb_ewmh_init_atoms(connection, &connection_), nullptr))
    {
    }
    ~Ewmh()
    {
        if (ready_)
            xcb_ewmh_connection_wipe(&connection_);
    }
    Ewmh(const Ewmh&) = delete;
    Ewmh& operator=(const Ewmh&) = delete;

    // Null when the server is gone.
    xcb_ewmh_connection_t* get() { return ready_ ? &connection_ : nullptr; }

private:
    xcb_ewmh_connection_t connection_{};
    bool ready_;
};

std::vector<Window> listed(xcb_ewmh_connection_t* ewmh)
{
    xcb_ewmh_get_windows_reply_t reply;
    if (!ewmh
        || !xcb_ewmh_get_client_list_reply(
            ewmh, xcb_ewmh_get_client_list(ewmh, 0), &reply, nullptr))
        return {};
    std::vector<Window> windows(reply.windows, reply.windows + reply.windows_len);
    xcb_ewmh_get_windows_reply_wipe(&reply);
    return windows;
}

// Two strings, each ended by a NUL (ICCCM 4.1.2.5), as one text.
std::string classOf(xcb_connection_t* connection, Window window)
{
    constexpr std::uint32_t longest = 256; // In units of 4 bytes.
    const auto asked =
        xcb_get_property(connection, 0, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, longest);
    const x11::Reply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection, asked, nullptr));
    if (!reply)
        return {}; // The window went away meanwhile.
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
        static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

bool hasPart(const std::string& windowClass, const std::string& name)
{
    for (std::size_t start = 0; start < windowClass.size();) {
        const char* const part = windowClass.c_str() + start;
        if (::strcasecmp(part, name.c_str()) == 0)
            return true;
        start += std::string_view(part).size() + 1;
    }
    return false;
}

} // namespace

ClientWindows::ClientWindows(xcb_connection_t* connection)
    : connection_(connection)
{
}

std::optional<Window> ClientWindows::ofClass(const std::string& name) const
{
    Ewmh ewmh(connection_);
    const auto windows = listed(ewmh.get());
    const auto found = std::find_if(windows.begin(), windows.end(),
        [&](Window window) { return hasPart(classOf(connection_, window), name); });
    return found == windows.end() ? std::nullopt : std::optional(*found);
}

void ClientWindows::activate(Window window) const
{
    Ewmh ewmh(connection_);
    if (!ewmh.get())
        return;
    // As a pager: a window manager that guards the focus believes that the person wants it.
    xcb_ewmh_request_change_active_window(ewmh.get(), 0, window, XCB_EWMH_CLIENT_SOURCE_TYPE_OTHER,
        XCB_CURRENT_TIME, XCB_WINDOW_NONE);
    xcb_flush(connection_);
}

} // namespace notch
