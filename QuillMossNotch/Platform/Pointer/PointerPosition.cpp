// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Pointer/PointerPosition.h"

#include "Platform/Display/X11.h"

#include <QCursor>

namespace notch {

namespace {

using Pointer = x11::Reply<xcb_query_pointer_reply_t>;

} // namespace

std::optional<QPointF> pointerPositionIn(QWindow& window)
{
    constexpr double pixelCentre = 0.5;
    auto* connection = x11::connection();
    if (!connection)
        return QPointF(window.mapFromGlobal(QCursor::pos())) + QPointF(pixelCentre, pixelCentre);
    const auto ofWindow = xcb_query_pointer(connection, static_cast<xcb_window_t>(window.winId()));
    const auto ofRoot = xcb_query_pointer(connection, x11::root());
    const Pointer inWindow(xcb_query_pointer_reply(connection, ofWindow, nullptr));
    const Pointer onRoot(xcb_query_pointer_reply(connection, ofRoot, nullptr));
    if (!inWindow || !inWindow->same_screen || !onRoot || !x11::isOurOwn(onRoot->child))
        return std::nullopt;
    return QPointF(inWindow->win_x + pixelCentre, inWindow->win_y + pixelCentre)
         / window.devicePixelRatio();
}

} // namespace notch
