// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Workspace/ApplicationWatch.h"

#include "Platform/Display/X11.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace notch {
namespace {

// Some member of `now` was not in `before`.
bool hasNew(const std::set<std::int32_t>& now, const std::set<std::int32_t>& before)
{
    return !std::ranges::includes(before, now);
}

} // namespace

bool ApplicationWatch::tellsOfChange(const Seen& before, const Seen& now)
{
    return now.active != before.active || hasNew(before.running, now.running)
        || hasNew(now.hidden, before.hidden);
}

ApplicationWatch::ApplicationWatch(const RunningApplications& applications)
    : applications_(applications)
    , x_({})
{
}

void ApplicationWatch::observe(std::function<void()> changed)
{
    changed_ = std::move(changed);
    readable_.reset();
    if (!changed_ || !x_.isConnected())
        return;
    select(x_.root());
    seen_ = look();
    readable_.emplace(xcb_get_file_descriptor(x_.connection()), QSocketNotifier::Read);
    QObject::connect(
        &*readable_, &QSocketNotifier::activated, &*readable_, [this] { handleEvents(); });
    handleEvents(); // Events that came during the first look are queued already and wake no poll.
}

void ApplicationWatch::handleEvents()
{
    bool changed = false;
    while (drain()) {
        const auto before = std::exchange(seen_, look());
        changed = changed || tellsOfChange(before, seen_);
    }
    if (const auto tell = changed_; tell && changed)
        tell();
}

// True: something that matters was among the events.
bool ApplicationWatch::drain()
{
    const auto& atoms = x_.atoms();
    bool matters = false;
    while (const x11::Reply<xcb_generic_event_t> event{xcb_poll_for_event(x_.connection())}) {
        if ((event->response_type & ~0x80) != XCB_PROPERTY_NOTIFY)
            continue;
        const auto atom = reinterpret_cast<const xcb_property_notify_event_t*>(event.get())->atom;
        matters = matters || atom == atoms.activeWindow || atom == atoms.clientList
               || atom == atoms.state;
    }
    if (!x_.isConnected())
        readable_->setEnabled(false); // The server is gone, and would be readable for ever.
    return matters;
}

ApplicationWatch::Seen ApplicationWatch::look()
{
    const auto windows = applications_.managed();
    watchHost(windows);
    Seen now;
    const auto active = applications_.activePids();
    now.active = active.empty() ? seen_.active : active.back();
    std::set<std::int32_t> visible;
    for (const auto& window : windows) {
        now.running.insert(window.pid);
        if (!window.isMinimized)
            visible.insert(window.pid);
    }
    std::ranges::set_difference(now.running, visible, std::inserter(now.hidden, now.hidden.end()));
    return now;
}

void ApplicationWatch::watchHost(const std::vector<RunningApplications::Managed>& windows)
{
    std::set<XClient::Window> ofHost;
    for (const auto& window : windows)
        if (window.isOfHost)
            ofHost.insert(window.window);
    for (const auto window : ofHost)
        if (!watched_.contains(window))
            select(window);
    watched_ = std::move(ofHost);
}

// A window that is gone by now answers with an error among the events, which says nothing.
void ApplicationWatch::select(XClient::Window window)
{
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(x_.connection(), window, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(x_.connection());
}

} // namespace notch
