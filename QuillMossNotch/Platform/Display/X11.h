// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace notch::x11 {

// What xcb hands out belongs to malloc.
struct Free {
    void operator()(void* reply) const { std::free(reply); }
};
template <class T> using Reply = std::unique_ptr<T, Free>;

// $DISPLAY names a server that answers. Asked before the toolkit is: without a display that ends
// the process in its own way.
bool displayIsReachable();
// The toolkit's own connection; null where it draws without an X server.
xcb_connection_t* connection();
// The server is XWayland: beside its windows there are native ones that it does not know of.
// Needs a connection.
bool isXWayland();
// The root of the toolkit's X screen. Needs a connection.
xcb_window_t root();
xcb_atom_t atom(const char* name);
// One of this program's top-level windows, menus and tool tips included.
bool isOurOwn(xcb_window_t window);
xcb_window_t selectionOwner(const char* selection);
// Takes a free selection until the process ends. False: another program holds it.
bool claimSelection(const char* selection);

} // namespace notch::x11
