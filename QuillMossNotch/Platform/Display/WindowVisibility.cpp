// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Display/WindowVisibility.h"

#include "Platform/Display/X11.h"

#include <QCoreApplication>

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

namespace notch {

namespace {

constexpr std::uint8_t sentEventBit = 0x80;

struct Placed {
    xcb_window_t window = XCB_WINDOW_NONE;
    xcb_get_window_attributes_cookie_t attributes{};
    xcb_get_geometry_cookie_t geometry{};
};

// From the one right above `window` to the topmost.
std::vector<xcb_window_t> windowsAbove(xcb_window_t window)
{
    const x11::Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
        x11::connection(), xcb_query_tree(x11::connection(), x11::root()), nullptr));
    if (!tree)
        return {};
    const std::span children(xcb_query_tree_children(tree.get()),
        static_cast<std::size_t>(xcb_query_tree_children_length(tree.get())));
    const auto own = std::find(children.begin(), children.end(), window);
    return own == children.end() ? std::vector<xcb_window_t>{}
                                 : std::vector<xcb_window_t>(own + 1, children.end());
}

QRect outerRect(const xcb_get_geometry_reply_t& geometry)
{
    const int border = 2 * geometry.border_width;
    return {geometry.x, geometry.y, geometry.width + border, geometry.height + border};
}

// All are asked for before the first answer is waited for.
std::vector<Placed> askPlaces(std::span<const xcb_window_t> windows)
{
    std::vector<Placed> asked;
    for (const auto window : windows)
        asked.push_back({window, xcb_get_window_attributes(x11::connection(), window),
            xcb_get_geometry(x11::connection(), window)});
    return asked;
}

// Empty for a window that is gone by now or shows nothing.
QRect shownPart(const Placed& placed)
{
    const x11::Reply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(x11::connection(), placed.attributes, nullptr));
    const x11::Reply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(x11::connection(), placed.geometry, nullptr));
    const bool shows = attributes && geometry && attributes->map_state == XCB_MAP_STATE_VIEWABLE
                    && attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT;
    return shows && !x11::isOurOwn(placed.window) ? outerRect(*geometry) : QRect();
}

QRegion coveredPart(const QRect& area, std::span<const xcb_window_t> above)
{
    QRegion covered;
    for (const auto& placed : askPlaces(above))
        covered += area.intersected(shownPart(placed));
    return covered;
}

qint64 pixels(const QRegion& region)
{
    qint64 sum = 0;
    for (const QRect& part : region)
        sum += qint64{part.width()} * part.height();
    return sum;
}

// The toolkit has a mask of its own on the root.
void selectRootChanges(WindowVisibility::Watch watch)
{
    const x11::Reply<xcb_get_window_attributes_reply_t> present(xcb_get_window_attributes_reply(
        x11::connection(), xcb_get_window_attributes(x11::connection(), x11::root()), nullptr));
    if (!present)
        return;
    constexpr std::uint32_t changes = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    const std::uint32_t mask = watch == WindowVisibility::Watch::on
                                 ? present->your_event_mask | changes
                                 : present->your_event_mask & ~changes;
    xcb_change_window_attributes(x11::connection(), x11::root(), XCB_CW_EVENT_MASK, &mask);
}

// Tells of a child of the root: these events name the window that they are sent to first.
bool isRootChange(const xcb_generic_event_t& event)
{
    switch (event.response_type & ~sentEventBit) {
    case XCB_CIRCULATE_NOTIFY:
    case XCB_CONFIGURE_NOTIFY:
    case XCB_DESTROY_NOTIFY:
    case XCB_MAP_NOTIFY:
    case XCB_REPARENT_NOTIFY:
    case XCB_UNMAP_NOTIFY:
        return reinterpret_cast<const xcb_map_notify_event_t&>(event).event == x11::root();
    }
    return false;
}

} // namespace

WindowVisibility::WindowVisibility(QWindow& window, Changes changes)
    : window_(window)
    , changes_(std::move(changes))
{
    if (x11::connection())
        QCoreApplication::instance()->installNativeEventFilter(this);
}

WindowVisibility::~WindowVisibility()
{
    if (auto* application = QCoreApplication::instance())
        application->removeNativeEventFilter(this);
}

void WindowVisibility::setArea(const PixelRect& area)
{
    if (area_ == area)
        return;
    area_ = area;
    if (watch_ == Watch::on)
        inspect();
}

void WindowVisibility::set(Watch watch)
{
    if (!x11::connection() || std::exchange(watch_, watch) == watch)
        return;
    selectRootChanges(watch);
    covered_ = QRegion();
    if (watch == Watch::on)
        inspect();
}

bool WindowVisibility::nativeEventFilter(const QByteArray&, void* message, qintptr*)
{
    if (watch_ == Watch::on && isRootChange(*static_cast<xcb_generic_event_t*>(message)))
        inspect();
    return false;
}

void WindowVisibility::inspect()
{
    const auto own = static_cast<xcb_window_t>(window_.winId());
    const x11::Reply<xcb_get_geometry_reply_t> place(xcb_get_geometry_reply(
        x11::connection(), xcb_get_geometry(x11::connection(), own), nullptr));
    if (!place)
        return;
    const QRect area(area_.x, area_.y, area_.width, area_.height);
    const bool wasHidden = isHidden();
    const auto before =
        std::exchange(covered_, coveredPart(area.translated(place->x, place->y), windowsAbove(own))
                                    .translated(-place->x, -place->y));
    if (!before.intersected(area).subtracted(covered_).isEmpty())
        changes_.uncovered();
    if (!wasHidden && isHidden())
        changes_.hidden();
}

bool WindowVisibility::isHidden() const
{
    return 2 * pixels(covered_) > qint64{area_.width} * area_.height;
}

} // namespace notch
