// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/RunningApplications/RunningApplications.h"

#include "Foundation/UniqueFd.h"
#include "Platform/Display/X11.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <poll.h>
#include <string_view>
#include <strings.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

namespace notch {
namespace {

// Windows may name each other in a circle.
constexpr int longestTransientChain = 8;

// Gone, or a zombie that nobody has waited for yet. pidfd_open(2): a process that has ended makes
// its descriptor readable.
bool isTerminated(std::int32_t pid)
{
    // The wrapper of glibc 2.36 has C++ linkage, which no library defines.
    const UniqueFd process(static_cast<int>(::syscall(SYS_pidfd_open, pid, 0)));
    if (!process.valid())
        return errno == ESRCH || (::kill(pid, 0) != 0 && errno == ESRCH);
    pollfd waited{process.get(), POLLIN, 0};
    return ::poll(&waited, 1, 0) > 0;
}

template <class T> bool contains(const std::vector<T>& values, const T& value)
{
    return std::ranges::find(values, value) != values.end();
}

} // namespace

RunningApplications::RunningApplications(
    std::vector<std::string> classes, const std::string& display)
    : x_(display)
    , classes_(std::move(classes))
{
}

// WM_CLASS is two strings, each ended by a NUL (ICCCM 4.1.2.5).
bool RunningApplications::isOfHost(
    const std::string& windowClass, const std::string& applicationID) const
{
    const auto named = [this](const char* name) {
        return std::ranges::any_of(classes_,
            [name](const std::string& wanted) { return ::strcasecmp(name, wanted.c_str()) == 0; });
    };
    for (std::size_t start = 0; start < windowClass.size();) {
        const char* const part = windowClass.c_str() + start;
        if (named(part))
            return true;
        start += std::string_view(part).size() + 1;
    }
    return named(applicationID.c_str());
}

std::vector<RunningApplications::Managed> RunningApplications::managed() const
{
    struct Asked {
        XClient::PidCookies pid;
        xcb_get_property_cookie_t state, windowClass, applicationID;
    };
    if (!x_.isConnected())
        return {};
    const auto listed = x_.numbers(x_.askProperty(x_.root(), x_.atoms().clientList));
    std::vector<Asked> asked;
    asked.reserve(listed.size());
    for (const auto window : listed)
        asked.push_back({x_.askPid(window), x_.askProperty(window, x_.atoms().state),
            x_.askProperty(window, XCB_ATOM_WM_CLASS),
            x_.askProperty(window, x_.atoms().gtkApplicationID)});
    std::vector<Managed> windows;
    for (std::size_t i = 0; i < listed.size(); ++i) {
        const auto pid = x_.pid(asked[i].pid);
        const auto states = x_.numbers(asked[i].state);
        const auto windowClass = x_.bytes(asked[i].windowClass);
        const auto applicationID = x_.bytes(asked[i].applicationID);
        if (pid > 0)
            windows.push_back({listed[i], pid, contains(states, x_.atoms().stateHidden),
                isOfHost(windowClass, applicationID)});
    }
    return windows;
}

std::vector<std::int32_t> RunningApplications::activePids() const
{
    std::vector<std::int32_t> pids;
    auto next = x_.numbers(x_.askProperty(x_.root(), x_.atoms().activeWindow));
    for (int i = 0; i < longestTransientChain; ++i) {
        if (next.empty() || next.front() == XCB_WINDOW_NONE || next.front() == x_.root())
            break;
        const auto pid = x_.askPid(next.front());
        const auto owner = x_.askProperty(next.front(), XCB_ATOM_WM_TRANSIENT_FOR);
        pids.push_back(x_.pid(pid));
        next = x_.numbers(owner);
    }
    return pids;
}

std::vector<HostApplication> RunningApplications::running() const
{
    const auto windows = managed();
    std::vector<std::int32_t> hosts;
    for (const auto& window : windows)
        if (window.isOfHost && !contains(hosts, window.pid))
            hosts.push_back(window.pid);
    if (hosts.empty())
        return {};
    const auto active = activePids();
    std::vector<HostApplication> applications;
    for (const auto pid : hosts) {
        const bool isHidden = std::ranges::all_of(
            windows, [pid](const auto& window) { return window.pid != pid || window.isMinimized; });
        applications.push_back({pid, isTerminated(pid), contains(active, pid), isHidden});
    }
    return applications;
}

int RunningApplications::changesDescriptor()
{
    if (!x_.isConnected())
        return -1;
    const std::uint32_t properties = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(x_.connection(), x_.root(), XCB_CW_EVENT_MASK, &properties);
    xcb_flush(x_.connection());
    return xcb_get_file_descriptor(x_.connection());
}

bool RunningApplications::takeChanges()
{
    bool changed = false;
    using Event = x11::Reply<xcb_generic_event_t>;
    while (const Event event{xcb_poll_for_event(x_.connection())}) {
        const auto* property = reinterpret_cast<xcb_property_notify_event_t*>(event.get());
        changed = changed
               || ((event->response_type & ~0x80) == XCB_PROPERTY_NOTIFY
                   && (property->atom == x_.atoms().clientList
                       || property->atom == x_.atoms().activeWindow));
    }
    return changed;
}

RunningApplications::Window RunningApplications::describe(const Managed& managed) const
{
    const auto name = x_.askProperty(managed.window, x_.atoms().name);
    const auto plainName = x_.askProperty(managed.window, XCB_ATOM_WM_NAME);
    const auto geometry = xcb_get_geometry(x_.connection(), managed.window);
    const auto position =
        xcb_translate_coordinates(x_.connection(), managed.window, x_.root(), 0, 0);
    Window window{.title = x_.bytes(name), .frame = {}, .isMinimized = managed.isMinimized};
    const auto otherwise = x_.bytes(plainName);
    if (window.title.empty())
        window.title = otherwise;
    const x11::Reply<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(x_.connection(), geometry, nullptr));
    const x11::Reply<xcb_translate_coordinates_reply_t> origin(
        xcb_translate_coordinates_reply(x_.connection(), position, nullptr));
    if (size && origin)
        window.frame = {static_cast<double>(origin->dst_x), static_cast<double>(origin->dst_y),
            static_cast<double>(size->width), static_cast<double>(size->height)};
    return window;
}

std::vector<RunningApplications::Window> RunningApplications::windows(std::int32_t pid) const
{
    std::vector<Window> described;
    for (const auto& window : managed())
        if (window.pid == pid)
            described.push_back(describe(window));
    return described;
}

bool RunningApplications::activate(std::int32_t pid) const
{
    const auto windows = managed();
    const auto found = std::ranges::find(windows, pid, &Managed::pid);
    if (found == windows.end())
        return false;
    // As a pager (source 2): a window manager that guards the focus believes that the person wants
    // it.
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = found->window;
    message.type = x_.atoms().activeWindow;
    message.data.data32[0] = 2;
    xcb_send_event(x_.connection(), 0, x_.root(),
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
        reinterpret_cast<const char*>(&message));
    xcb_flush(x_.connection());
    return true;
}

} // namespace notch
