// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Geometry/NotchShape.h"
#include "support/WaitUntil.h"

#include <xcb/shape.h>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace notch {

// Another program on $DISPLAY, with a connection of its own: what it sees of the desktop, it sees
// as any program does, and what a person does with mouse and keyboard comes from it through the
// X Test Extension. Every operation returns when the server has done it.
class OtherProgram {
public:
    using Window = xcb_window_t;
    using Colour = std::uint32_t;
    static constexpr Colour black = 0x000000;
    static constexpr Colour white = 0xFFFFFF;

    // White, managed and shown; of this WM_CLASS.
    Window openWindow(const std::string& windowClass = "other")
    {
        const auto twice = windowClass + '\0' + windowClass + '\0'; // Instance and class.
        return open(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, twice);
    }
    Window openFullScreenWindow()
    {
        const auto fullScreen = atom("_NET_WM_STATE_FULLSCREEN");
        return open(atom("_NET_WM_STATE"), XCB_ATOM_ATOM,
            {reinterpret_cast<const char*>(&fullScreen), sizeof fullScreen});
    }
    // As a screen locker or a notification would: unknown to the window manager, on top.
    Window openAbove(const PixelRect& place)
    {
        const auto window = create(1);
        const std::uint32_t geometry[] = {std::uint32_t(place.x), std::uint32_t(place.y),
            std::uint32_t(place.width), std::uint32_t(place.height)};
        xcb_configure_window(x(), window,
            XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH
                | XCB_CONFIG_WINDOW_HEIGHT,
            geometry);
        xcb_map_window(x(), window);
        settle();
        return window;
    }
    void close(Window window)
    {
        xcb_destroy_window(x(), window);
        settle();
    }
    void setText(Window window, const std::string& property, const std::string& text)
    {
        setProperty(window, atom(property), XCB_ATOM_STRING, text);
        settle();
    }
    // Also for properties that hold a window or an atom, which are numbers of 32 bits as well.
    void setNumber(Window window, const std::string& property, std::uint32_t number)
    {
        setProperty(window, atom(property), XCB_ATOM_ATOM,
            {reinterpret_cast<const char*>(&number), sizeof number});
        settle();
    }
    void iconify(Window window)
    {
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = window;
        message.type = atom("WM_CHANGE_STATE");
        message.data.data32[0] = 3; // IconicState (ICCCM 4.1.4)
        xcb_send_event(x(), 0, screen_->root,
            XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
            reinterpret_cast<const char*>(&message));
        settle();
    }
    // Button presses that its windows have had since the last call.
    int takePresses()
    {
        settle();
        int presses = 0;
        while (const auto event = owned(xcb_poll_for_event(x())))
            presses += event->response_type == XCB_BUTTON_PRESS ? 1 : 0;
        return presses;
    }
    int widthOf(Window window)
    {
        return owned(xcb_get_geometry_reply(x(), xcb_get_geometry(x(), window), nullptr))->width;
    }
    Window focus()
    {
        return owned(xcb_get_input_focus_reply(x(), xcb_get_input_focus(x()), nullptr))->focus;
    }

    void moveTo(int toX, int toY) { fake(XCB_MOTION_NOTIFY, 0, toX, toY); }
    // The server itself waits before the next thing that the person does.
    void pause(std::uint32_t milliseconds) { pause_ = milliseconds; }
    void press(std::uint8_t button = 1) { fake(XCB_BUTTON_PRESS, button); }
    void release(std::uint8_t button = 1) { fake(XCB_BUTTON_RELEASE, button); }
    void clickAt(int atX, int atY)
    {
        moveTo(atX, atY);
        press();
        release();
    }
    enum class Key : std::uint8_t { escape = 9, tab = 23 }; // Of every evdev keyboard.
    void type(Key key)
    {
        fake(XCB_KEY_PRESS, static_cast<std::uint8_t>(key));
        fake(XCB_KEY_RELEASE, static_cast<std::uint8_t>(key));
    }

    Colour colourAt(int atX, int atY)
    {
        const auto cookie = xcb_get_image(x(), XCB_IMAGE_FORMAT_Z_PIXMAP, screen_->root,
            static_cast<std::int16_t>(atX), static_cast<std::int16_t>(atY), 1, 1, ~0U);
        const auto image = owned(xcb_get_image_reply(x(), cookie, nullptr));
        return *reinterpret_cast<const Colour*>(xcb_get_image_data(image.get())) & white;
    }
    // XCB_SHAPE_SK_BOUNDING: what is visible; XCB_SHAPE_SK_INPUT: where it can be clicked. One
    // rectangle for a window that is not cut.
    std::vector<PixelRect> region(Window window, xcb_shape_kind_t kind)
    {
        const auto cookie = xcb_shape_get_rectangles(x(), window, kind);
        const auto reply = owned(xcb_shape_get_rectangles_reply(x(), cookie, nullptr));
        std::vector<PixelRect> areas;
        for (auto it = xcb_shape_get_rectangles_rectangles_iterator(reply.get()); it.rem > 0;
             xcb_rectangle_next(&it))
            areas.push_back({it.data->x, it.data->y, it.data->width, it.data->height});
        return areas;
    }

    // Becomes what the desktop has only one of, as a settings daemon does, until it ends.
    void claim(const std::string& selection)
    {
        xcb_set_selection_owner(x(), owner_, atom(selection), XCB_CURRENT_TIME);
        settle();
    }
    // Becomes the desktop's tray, with room for one item here; false when none comes.
    bool takeTrayItem(int atX, int atY)
    {
        claim("_NET_SYSTEM_TRAY_S0");
        const auto tray = openAbove({atX, atY, 22, 22});
        return waitUntil([&] {
            const auto event = owned(xcb_poll_for_event(x()));
            if (!event || (event->response_type & 0x7F) != XCB_CLIENT_MESSAGE)
                return false;
            const auto& asked = reinterpret_cast<xcb_client_message_event_t&>(*event);
            xcb_reparent_window(x(), asked.data.data32[2], tray, 0, 0);
            xcb_map_window(x(), asked.data.data32[2]);
            settle();
            return asked.type == atom("_NET_SYSTEM_TRAY_OPCODE");
        });
    }
    // As its button in a task bar would do; false when it stays.
    bool iconifyActiveWindow()
    {
        const auto window = activeWindow();
        xcb_client_message_event_t change{.response_type = XCB_CLIENT_MESSAGE, .format = 32};
        change.window = window;
        change.type = atom("WM_CHANGE_STATE");
        change.data.data32[0] = 3; // IconicState
        xcb_send_event(x(), 0, screen_->root, XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
            reinterpret_cast<const char*>(&change));
        return waitUntil([&] { return activeWindow() != window; });
    }
    // Publishes bytes on the window with which it claims, as a type of that name: the toolkit reads
    // settings of another one for ever.
    void publish(const std::string& property, const std::string& bytes)
    {
        setProperty(owner_, atom(property), atom(property), bytes);
        settle();
    }

private:
    template <class T> static std::shared_ptr<T> owned(T* reply) { return {reply, std::free}; }

    xcb_connection_t* x() const { return connection_.get(); }
    xcb_atom_t atom(const std::string& name)
    {
        const auto cookie =
            xcb_intern_atom(x(), 0, static_cast<std::uint16_t>(name.size()), name.c_str());
        return owned(xcb_intern_atom_reply(x(), cookie, nullptr))->atom;
    }
    Window activeWindow()
    {
        const auto cookie = xcb_get_property(
            x(), 0, screen_->root, atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW, 0, 1);
        const auto reply = owned(xcb_get_property_reply(x(), cookie, nullptr));
        return *static_cast<Window*>(xcb_get_property_value(reply.get()));
    }
    Window create(std::uint32_t overrideRedirect = 0)
    {
        const Window window = xcb_generate_id(x());
        const std::uint32_t values[] = {
            screen_->white_pixel, overrideRedirect, XCB_EVENT_MASK_BUTTON_PRESS};
        xcb_create_window(x(), XCB_COPY_FROM_PARENT, window, screen_->root, 0, 0, 300, 200, 0,
            XCB_WINDOW_CLASS_INPUT_OUTPUT, screen_->root_visual,
            XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
        return window;
    }
    void setProperty(Window window, xcb_atom_t property, xcb_atom_t type, std::string_view bytes)
    {
        const std::uint8_t format = type == XCB_ATOM_ATOM ? 32 : 8;
        xcb_change_property(x(), XCB_PROP_MODE_REPLACE, window, property, type, format,
            static_cast<std::uint32_t>(bytes.size() * 8 / format), bytes.data());
    }
    Window open(xcb_atom_t property, xcb_atom_t type, std::string_view bytes)
    {
        const auto window = create();
        setProperty(window, property, type, bytes);
        xcb_map_window(x(), window);
        settle();
        return window;
    }
    // The server does requests in order: any reply will do.
    void settle() { focus(); }
    void fake(std::uint8_t type, std::uint8_t detail, int toX = 0, int toY = 0)
    {
        xcb_test_fake_input(x(), type, detail, std::exchange(pause_, 0), screen_->root,
            static_cast<std::int16_t>(toX), static_cast<std::int16_t>(toY), 0);
        settle();
    }

    std::shared_ptr<xcb_connection_t> connection_{xcb_connect(nullptr, nullptr), xcb_disconnect};
    const xcb_screen_t* screen_ = xcb_setup_roots_iterator(xcb_get_setup(x())).data;
    Window owner_ = create();
    std::uint32_t pause_ = 0;
};

} // namespace notch
