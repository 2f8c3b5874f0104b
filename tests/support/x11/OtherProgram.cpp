// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "support/x11/OtherProgram.h"

#include <xcb/shape.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <chrono>
#include <thread>

namespace notch {

namespace {

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};
template <class T> using Reply = std::unique_ptr<T, Free>;

template <class T> Reply<T> owned(T* reply)
{
    return Reply<T>(reply);
}

} // namespace

OtherProgram::OtherProgram()
    : connection_(xcb_connect(nullptr, nullptr))
{
    owner_ = create({0, 0, 1, 1});
}

xcb_window_t OtherProgram::root() const
{
    return xcb_setup_roots_iterator(xcb_get_setup(x())).data->root;
}

xcb_atom_t OtherProgram::atom(const std::string& name)
{
    const auto cookie =
        xcb_intern_atom(x(), 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    return owned(xcb_intern_atom_reply(x(), cookie, nullptr))->atom;
}

// Any reply: the server does requests in order.
void OtherProgram::settle()
{
    owned(xcb_get_input_focus_reply(x(), xcb_get_input_focus(x()), nullptr));
}

// A manager that starts may miss a window that is opened meanwhile: one is opened again and again.
bool OtherProgram::windowManagerRuns()
{
    const auto window = openWindow({0, 0, 10, 10});
    const auto parent = [&] {
        return owned(xcb_query_tree_reply(x(), xcb_query_tree(x(), window), nullptr))->parent;
    };
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(200);
    while (parent() == root() && std::chrono::steady_clock::now() < deadline)
        std::this_thread::yield();
    const bool managed = parent() != root();
    close(window);
    return managed;
}

OtherProgram::Window OtherProgram::create(Area area)
{
    const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(x())).data;
    const Window window = xcb_generate_id(x());
    const std::uint32_t values[] = {screen->white_pixel, XCB_EVENT_MASK_BUTTON_PRESS};
    xcb_create_window(x(), XCB_COPY_FROM_PARENT, window, root(), static_cast<std::int16_t>(area.x),
        static_cast<std::int16_t>(area.y), static_cast<std::uint16_t>(area.width),
        static_cast<std::uint16_t>(area.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
        screen->root_visual, XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
    return window;
}

void OtherProgram::whitenDesktop()
{
    const auto white = xcb_setup_roots_iterator(xcb_get_setup(x())).data->white_pixel;
    xcb_change_window_attributes(x(), root(), XCB_CW_BACK_PIXEL, &white);
    xcb_clear_area(x(), 0, root(), 0, 0, 0, 0);
    settle();
}

void OtherProgram::show(Window window)
{
    xcb_map_window(x(), window);
    settle();
}

OtherProgram::Window OtherProgram::openWindow(Area area, const std::string& windowClass)
{
    const auto window = create(area);
    // ICCCM WM_NORMAL_HINTS with the position as the user's own, so that it is kept.
    const std::uint32_t hints[18] = {1U << 0};
    xcb_change_property(x(), XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NORMAL_HINTS,
        XCB_ATOM_WM_SIZE_HINTS, 32, 18, hints);
    const auto twice = windowClass + '\0' + windowClass + '\0'; // Instance and class.
    if (!windowClass.empty())
        xcb_change_property(x(), XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING,
            8, static_cast<std::uint32_t>(twice.size()), twice.data());
    show(window);
    return window;
}

OtherProgram::Window OtherProgram::openFullScreenWindow()
{
    const auto window = create({0, 0, 200, 200});
    const auto fullScreen = atom("_NET_WM_STATE_FULLSCREEN");
    xcb_change_property(x(), XCB_PROP_MODE_REPLACE, window, atom("_NET_WM_STATE"), XCB_ATOM_ATOM,
        32, 1, &fullScreen);
    show(window);
    return window;
}

void OtherProgram::activate(Window window)
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atom("_NET_ACTIVE_WINDOW");
    message.data.data32[0] = 2; // Asked for by the person (EWMH, source indication).
    xcb_send_event(x(), 0, root(),
        XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
        reinterpret_cast<const char*>(&message));
    settle();
}

void OtherProgram::close(Window window)
{
    xcb_destroy_window(x(), window);
    settle();
}

int OtherProgram::takePresses(Window window)
{
    settle();
    while (const auto event = owned(xcb_poll_for_event(x()))) {
        if ((event->response_type & 0x7F) == XCB_BUTTON_PRESS)
            presses_.push_back(reinterpret_cast<xcb_button_press_event_t*>(event.get())->event);
    }
    return static_cast<int>(std::erase(presses_, window));
}

OtherProgram::Window OtherProgram::focus()
{
    return owned(xcb_get_input_focus_reply(x(), xcb_get_input_focus(x()), nullptr))->focus;
}

void OtherProgram::fake(std::uint8_t type, std::uint8_t detail, int toX, int toY)
{
    xcb_test_fake_input(x(), type, detail, XCB_CURRENT_TIME, root(), static_cast<std::int16_t>(toX),
        static_cast<std::int16_t>(toY), 0);
    settle();
}

void OtherProgram::moveTo(int toX, int toY)
{
    fake(XCB_MOTION_NOTIFY, 0, toX, toY);
}

void OtherProgram::press(std::uint8_t button)
{
    fake(XCB_BUTTON_PRESS, button);
}

void OtherProgram::release(std::uint8_t button)
{
    fake(XCB_BUTTON_RELEASE, button);
}

void OtherProgram::clickAt(int atX, int atY)
{
    moveTo(atX, atY);
    press();
    release();
}

void OtherProgram::typeEscape()
{
    constexpr std::uint8_t escape = 9; // Of every evdev keyboard.
    fake(XCB_KEY_PRESS, escape);
    fake(XCB_KEY_RELEASE, escape);
}

OtherProgram::Colour OtherProgram::colourAt(int atX, int atY)
{
    const auto cookie = xcb_get_image(x(), XCB_IMAGE_FORMAT_Z_PIXMAP, root(),
        static_cast<std::int16_t>(atX), static_cast<std::int16_t>(atY), 1, 1, ~0U);
    const auto image = owned(xcb_get_image_reply(x(), cookie, nullptr));
    const auto* bytes = xcb_get_image_data(image.get());
    return {bytes[2], bytes[1], bytes[0]};
}

std::vector<OtherProgram::Area> OtherProgram::region(Window window, std::uint8_t kind)
{
    const auto cookie = xcb_shape_get_rectangles(x(), window, static_cast<xcb_shape_kind_t>(kind));
    const auto reply = owned(xcb_shape_get_rectangles_reply(x(), cookie, nullptr));
    std::vector<Area> areas;
    for (auto it = xcb_shape_get_rectangles_rectangles_iterator(reply.get()); it.rem > 0;
         xcb_rectangle_next(&it))
        areas.push_back({it.data->x, it.data->y, it.data->width, it.data->height});
    return areas;
}

std::vector<OtherProgram::Area> OtherProgram::visibleRegion(Window window)
{
    return region(window, XCB_SHAPE_SK_BOUNDING);
}

std::vector<OtherProgram::Area> OtherProgram::inputRegion(Window window)
{
    return region(window, XCB_SHAPE_SK_INPUT);
}

void OtherProgram::claim(const std::string& selection)
{
    xcb_set_selection_owner(x(), owner_, atom(selection), XCB_CURRENT_TIME);
    settle();
}

void OtherProgram::giveUp(const std::string& selection)
{
    xcb_set_selection_owner(x(), XCB_WINDOW_NONE, atom(selection), XCB_CURRENT_TIME);
    settle();
}

void OtherProgram::publish(const std::string& property, std::span<const std::uint8_t> bytes)
{
    xcb_change_property(x(), XCB_PROP_MODE_REPLACE, owner_, atom(property), XCB_ATOM_STRING, 8,
        static_cast<std::uint32_t>(bytes.size()), bytes.data());
    settle();
}

} // namespace notch
