// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Display/WindowShape.h"

#include "Platform/Display/X11.h"

#include <xcb/shape.h>

#include <array>
#include <cstdint>
#include <vector>

namespace notch {

namespace {

void setRegion(QWindow& window, xcb_shape_kind_t kind, std::span<const PixelRect> pixels)
{
    auto* connection = x11::connection();
    if (!connection)
        return;
    std::vector<xcb_rectangle_t> rectangles;
    rectangles.reserve(pixels.size());
    for (const auto& p : pixels) {
        rectangles.push_back({static_cast<std::int16_t>(p.x), static_cast<std::int16_t>(p.y),
            static_cast<std::uint16_t>(p.width), static_cast<std::uint16_t>(p.height)});
    }
    xcb_shape_rectangles(connection, XCB_SHAPE_SO_SET, kind, XCB_CLIP_ORDERING_YX_SORTED,
        static_cast<xcb_window_t>(window.winId()), 0, 0,
        static_cast<std::uint32_t>(rectangles.size()), rectangles.data());
}

void setCardinals(QWindow& window, const char* property, std::span<const std::uint32_t> values)
{
    if (auto* connection = x11::connection()) {
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE,
            static_cast<xcb_window_t>(window.winId()), x11::atom(property), XCB_ATOM_CARDINAL, 32,
            static_cast<std::uint32_t>(values.size()), values.data());
    }
}

} // namespace

void setInputRegion(QWindow& window, std::span<const PixelRect> pixels)
{
    setRegion(window, XCB_SHAPE_SK_INPUT, pixels);
}

void setVisibleRegion(QWindow& window, std::span<const PixelRect> pixels)
{
    setRegion(window, XCB_SHAPE_SK_BOUNDING, pixels);
}

void clearVisibleRegion(QWindow& window)
{
    if (auto* connection = x11::connection()) {
        xcb_shape_mask(connection, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING,
            static_cast<xcb_window_t>(window.winId()), 0, 0, XCB_PIXMAP_NONE);
    }
}

void keepPictureInResize(QWindow& window)
{
    if (auto* connection = x11::connection()) {
        constexpr std::uint32_t transparent = 0;
        const std::uint32_t values[] = {transparent, XCB_GRAVITY_NORTH};
        xcb_change_window_attributes(connection, static_cast<xcb_window_t>(window.winId()),
            XCB_CW_BACK_PIXEL | XCB_CW_BIT_GRAVITY, values);
    }
}

// The first property is picom's own. The second says that the window draws its frame by itself,
// which the rules in compositors' configurations ask for. Its margins are zero: the surface moves
// within the window, so that no margin would stay right.
void forbidShadow(QWindow& window)
{
    setCardinals(window, "_COMPTON_SHADOW", std::array<std::uint32_t, 1>{0});
    setCardinals(window, "_GTK_FRAME_EXTENTS", std::array<std::uint32_t, 4>{0, 0, 0, 0});
}

} // namespace notch
