// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "support/x11/OtherProgram.h"

#include <xcb/shape.h>
#include <xcb/xtest.h>

#include <cstdlib>

namespace notch {

namespace {

template <class T> std::shared_ptr<T> owned(T* reply)
{
    return {reply, std::free};
}

} // namespace

OtherProgram::OtherProgram()
    : connection_(xcb_connect(nullptr, nullptr), xcb_disconnect)
    , owner_(create())
{
}

const xcb_screen_t& OtherProgram::screen() const
{
    return *xcb_setup_roots_iterator(xcb_get_setup(x())).data;
}

xcb_atom_t OtherProgram::atom(const std::string& name)
{
    const auto cookie =
        xcb_intern_atom(x(), 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    return owned(xcb_intern_atom_reply(x(), cookie, nullptr))->atom;
}

OtherProgram::Window OtherProgram::create()
{
    const Window window = xcb_generate_id(x());
    const std::uint32_t values[] = {screen().white_pixel, XCB_EVENT_MASK_BUTTON_PRESS};
    xcb_create_window(x(), XCB_COPY_FROM_PARENT, window, screen().root, 0, 0, 300, 200, 0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT, screen().root_visual, XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK,
        values);
    return window;
}

void OtherProgram::setProperty(
    Window window, xcb_atom_t property, xcb_atom_t type, std::string_view bytes)
{
    const std::uint8_t format = type == XCB_ATOM_ATOM ? 32 : 8;
    xcb_change_property(x(), XCB_PROP_MODE_REPLACE, window, property, type, format,
        static_cast<std::uint32_t>(bytes.size() * 8 / format), bytes.data());
}

OtherProgram::Window OtherProgram::open(
    xcb_atom_t property, xcb_atom_t type, std::string_view bytes)
{
    const auto window = create();
    setProperty(window, property, type, bytes);
    xcb_map_window(x(), window);
    settle();
    return window;
}

OtherProgram::Window OtherProgram::openWindow(const std::string& windowClass)
{
    const auto twice = windowClass + '\0' + windowClass + '\0'; // Instance and class.
    return open(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, twice);
}

OtherProgram::Window OtherProgram::openFullScreenWindow()
{
    const auto fullScreen = atom("_NET_WM_STATE_FULLSCREEN");
    return open(atom("_NET_WM_STATE"), XCB_ATOM_ATOM,
        {reinterpret_cast<const char*>(&fullScreen), sizeof fullScreen});
}

int OtherProgram::takePresses()
{
    settle();
    int presses = 0;
    while (const auto event = owned(xcb_poll_for_event(x())))
        presses += event->response_type == XCB_BUTTON_PRESS ? 1 : 0;
    return presses;
}

OtherProgram::Window OtherProgram::focus()
{
    return owned(xcb_get_input_focus_reply(x(), xcb_get_input_focus(x()), nullptr))->focus;
}

void OtherProgram::fake(std::uint8_t type, std::uint8_t detail, int toX, int toY)
{
    xcb_test_fake_input(x(), type, detail, XCB_CURRENT_TIME, screen().root,
        static_cast<std::int16_t>(toX), static_cast<std::int16_t>(toY), 0);
    settle();
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
    const auto cookie = xcb_get_image(x(), XCB_IMAGE_FORMAT_Z_PIXMAP, screen().root,
        static_cast<std::int16_t>(atX), static_cast<std::int16_t>(atY), 1, 1, ~0U);
    const auto image = owned(xcb_get_image_reply(x(), cookie, nullptr));
    return *reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(image.get())) & white;
}

std::vector<PixelRect> OtherProgram::region(Window window, Region region)
{
    const auto cookie =
        xcb_shape_get_rectangles(x(), window, static_cast<xcb_shape_kind_t>(region));
    const auto reply = owned(xcb_shape_get_rectangles_reply(x(), cookie, nullptr));
    std::vector<PixelRect> areas;
    for (auto it = xcb_shape_get_rectangles_rectangles_iterator(reply.get()); it.rem > 0;
         xcb_rectangle_next(&it))
        areas.push_back({it.data->x, it.data->y, it.data->width, it.data->height});
    return areas;
}

void OtherProgram::claim(const std::string& selection)
{
    xcb_set_selection_owner(x(), owner_, atom(selection), XCB_CURRENT_TIME);
    settle();
}

void OtherProgram::publish(const std::string& property, const std::string& bytes)
{
    setProperty(owner_, atom(property), XCB_ATOM_STRING, bytes);
    settle();
}

} // namespace notch
