// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Display/X11.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace notch::x11 {

bool displayIsReachable()
{
    xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
    const bool reachable = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return reachable;
}

xcb_connection_t* connection()
{
    const auto* x11 =
        qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 ? x11->connection() : nullptr;
}

// Releases before 23.1 have no extension of that name, later ones may name their outputs otherwise.
bool isXWayland()
{
    constexpr std::string_view name = "XWAYLAND";
    const auto cookie =
        xcb_query_extension(connection(), static_cast<std::uint16_t>(name.size()), name.data());
    const Reply<xcb_query_extension_reply_t> extension(
        xcb_query_extension_reply(connection(), cookie, nullptr));
    const auto screens = QGuiApplication::screens();
    return (extension && extension->present)
        || std::any_of(screens.begin(), screens.end(), [&](const QScreen* screen) {
               return screen->name().startsWith(QLatin1StringView(name));
           });
}

xcb_window_t root()
{
    return xcb_setup_roots_iterator(xcb_get_setup(connection())).data->root;
}

xcb_atom_t atom(const char* name)
{
    const auto cookie =
        xcb_intern_atom(connection(), 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    const Reply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection(), cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

bool isOurOwn(xcb_window_t window)
{
    const auto windows = QGuiApplication::allWindows();
    return std::any_of(windows.begin(), windows.end(),
        [&](const QWindow* own) { return own->handle() && own->winId() == window; });
}

xcb_window_t selectionOwner(const char* selection)
{
    const auto cookie = xcb_get_selection_owner(connection(), atom(selection));
    const Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection(), cookie, nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

bool claimSelection(const char* selection)
{
    const auto name = atom(selection);
    const auto window = static_cast<xcb_window_t>(xcb_generate_id(connection()));
    xcb_create_window(connection(), 0, window, root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
        XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_grab_server(connection()); // Of two that ask at once, one gets it.
    const bool free = selectionOwner(selection) == XCB_WINDOW_NONE;
    if (free)
        xcb_set_selection_owner(connection(), window, name, XCB_CURRENT_TIME);
    xcb_ungrab_server(connection());
    xcb_flush(connection());
    return free;
}

} // namespace notch::x11
