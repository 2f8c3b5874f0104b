// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Display/SelectionWatch.h"

#include "Platform/Display/X11.h"

#include <QCoreApplication>

#include <xcb/xfixes.h>

#include <cstdint>
#include <utility>

namespace notch {

namespace {

constexpr std::uint8_t sentEventBit = 0x80;

} // namespace

SelectionWatch::SelectionWatch(const char* selection, std::function<void()> changed)
    : changed_(std::move(changed))
{
    auto* connection = x11::connection();
    if (!connection)
        return;
    held_ = x11::selectionOwner(selection) != XCB_WINDOW_NONE;
    const auto* xfixes = xcb_get_extension_data(connection, &xcb_xfixes_id);
    if (!xfixes || !xfixes->present)
        return;
    selection_ = x11::atom(selection);
    notifyType_ = xfixes->first_event + XCB_XFIXES_SELECTION_NOTIFY;
    xcb_discard_reply(connection,
        xcb_xfixes_query_version(connection, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION)
            .sequence);
    xcb_xfixes_select_selection_input(connection, x11::root(), selection_,
        XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER
            | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY
            | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    QCoreApplication::instance()->installNativeEventFilter(this);
}

SelectionWatch::~SelectionWatch()
{
    if (auto* application = QCoreApplication::instance())
        application->removeNativeEventFilter(this);
}

bool SelectionWatch::nativeEventFilter(const QByteArray&, void* message, qintptr*)
{
    const auto* event = static_cast<xcb_generic_event_t*>(message);
    if ((event->response_type & ~sentEventBit) != notifyType_)
        return false;
    const auto* notify = reinterpret_cast<const xcb_xfixes_selection_notify_event_t*>(event);
    if (notify->selection != selection_)
        return false;
    const bool held = notify->owner != XCB_WINDOW_NONE;
    if (std::exchange(held_, held) != held)
        changed_();
    return false;
}

} // namespace notch
