// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Pointer/PointerPosition.h"

#include "Platform/Display/X11.h"

#include <QCursor>

namespace notch {

std::optional<QPointF> pointerPositionIn(QWindow& window)
{
    constexpr double pixelCentre = 0.5;
    auto* connection = x11::connection();
    if (!connection)
        return QPointF(window.mapFromGlobal(QCursor::pos())) + QPointF(pixelCentre, pixelCentre);
    const auto cookie = xcb_query_pointer(connection, static_cast<xcb_window_t>(window.winId()));
    const x11::Reply<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(connection, cookie, nullptr));
    if (!reply || !reply->same_screen)
        return std::nullopt;
    return QPointF(reply->win_x + pixelCentre, reply->win_y + pixelCentre)
         / window.devicePixelRatio();
}

} // namespace notch
