// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/RunningApplications/XClient.h"

#include "Platform/Display/X11.h"

#include <cstring>

namespace notch {
namespace {

constexpr std::uint32_t longestProperty = 16384; // In units of 4 bytes.
constexpr std::uint8_t numberBits = 32;
constexpr std::uint8_t byteBits = 8;

xcb_intern_atom_cookie_t ask(xcb_connection_t* connection, const char* name)
{
    return xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
}

xcb_atom_t read(xcb_connection_t* connection, xcb_intern_atom_cookie_t asked)
{
    const x11::Reply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection, asked, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

XClient::Atoms lookUp(xcb_connection_t* connection)
{
    const auto clientList = ask(connection, "_NET_CLIENT_LIST");
    const auto activeWindow = ask(connection, "_NET_ACTIVE_WINDOW");
    const auto state = ask(connection, "_NET_WM_STATE");
    const auto stateHidden = ask(connection, "_NET_WM_STATE_HIDDEN");
    const auto pid = ask(connection, "_NET_WM_PID");
    const auto name = ask(connection, "_NET_WM_NAME");
    const auto gtkApplicationID = ask(connection, "_GTK_APPLICATION_ID");
    return {
        .clientList = read(connection, clientList),
        .activeWindow = read(connection, activeWindow),
        .state = read(connection, state),
        .stateHidden = read(connection, stateHidden),
        .pid = read(connection, pid),
        .name = read(connection, name),
        .gtkApplicationID = read(connection, gtkApplicationID),
    };
}

} // namespace

XClient::XClient(const std::string& display)
    : connection_(xcb_connect(display.empty() ? nullptr : display.c_str(), nullptr), xcb_disconnect)
{
    if (!isConnected())
        return;
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection())).data->root;
    atoms_ = lookUp(connection());
}

xcb_get_property_cookie_t XClient::askProperty(Window window, xcb_atom_t property) const
{
    return xcb_get_property(
        connection(), 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, longestProperty);
}

std::vector<std::uint32_t> XClient::numbers(xcb_get_property_cookie_t asked) const
{
    const x11::Reply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection(), asked, nullptr));
    if (!reply || reply->format != numberBits)
        return {}; // The window has none, or went away meanwhile.
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

std::string XClient::bytes(xcb_get_property_cookie_t asked) const
{
    const x11::Reply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection(), asked, nullptr));
    if (!reply || reply->format != byteBits)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())), reply->value_len};
}

XClient::PidCookies XClient::askPid(Window window) const
{
    const xcb_res_client_id_spec_t spec{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    return {xcb_res_query_client_ids(connection(), 1, &spec), askProperty(window, atoms_.pid)};
}

std::int32_t XClient::pid(const PidCookies& asked) const
{
    const x11::Reply<xcb_res_query_client_ids_reply_t> reply(
        xcb_res_query_client_ids_reply(connection(), asked.resource, nullptr));
    const auto named = numbers(asked.property);
    if (reply && reply->num_ids > 0) {
        const auto id = xcb_res_query_client_ids_ids_iterator(reply.get());
        if (xcb_res_client_id_value_value_length(id.data) > 0)
            return static_cast<std::int32_t>(*xcb_res_client_id_value_value(id.data));
    }
    return named.empty() ? 0 : static_cast<std::int32_t>(named.front());
}

} // namespace notch
