// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>
#include <xcb/res.h>
#include <xcb/xcb.h>

namespace notch {

// A connection of its own to an X server, for questions about other programs' windows. A
// question is sent with ask…() and answered by the read of the same name, so that many of them cost
// one round trip. One thread at a time. Without a server every answer is empty.
class XClient {
public:
    using Window = xcb_window_t;

    // The atoms, which it looks up once.
    struct Atoms {
        xcb_atom_t clientList = XCB_ATOM_NONE;
        xcb_atom_t activeWindow = XCB_ATOM_NONE;
        xcb_atom_t state = XCB_ATOM_NONE;
        xcb_atom_t stateHidden = XCB_ATOM_NONE;
        xcb_atom_t pid = XCB_ATOM_NONE;
        xcb_atom_t name = XCB_ATOM_NONE;
        xcb_atom_t gtkApplicationID = XCB_ATOM_NONE;
    };

    // An empty text means $DISPLAY.
    explicit XClient(const std::string& display);

    bool isConnected() const { return xcb_connection_has_error(connection_.get()) == 0; }
    xcb_connection_t* connection() const { return connection_.get(); }
    Window root() const { return root_; }
    const Atoms& atoms() const { return atoms_; }

    xcb_get_property_cookie_t askProperty(Window window, xcb_atom_t property) const;
    // Values of 32 bits; none for a property of another format.
    std::vector<std::uint32_t> numbers(xcb_get_property_cookie_t asked) const;
    // Bytes, which may hold NULs; none for a property of another format.
    std::string bytes(xcb_get_property_cookie_t asked) const;

    struct PidCookies {
        xcb_res_query_client_ids_cookie_t resource;
        xcb_get_property_cookie_t property;
    };
    PidCookies askPid(Window window) const;
    // The process that the server knows behind the window, else the one that the window names; 0 if
    // neither is known.
    std::int32_t pid(const PidCookies& asked) const;

private:
    std::shared_ptr<xcb_connection_t> connection_;
    Window root_ = XCB_WINDOW_NONE;
    Atoms atoms_;
};

} // namespace notch
