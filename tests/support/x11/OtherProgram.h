// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace notch {

// Another program on $DISPLAY, with a connection of its own: what it sees of the desktop, it sees
// as any program does, and what a person does with mouse and keyboard comes from it through the
// X Test Extension. Every operation returns when the server has done it.
class OtherProgram {
public:
    using Window = xcb_window_t;
    struct Colour {
        int red = 0;
        int green = 0;
        int blue = 0;

        bool operator==(const Colour&) const = default;
    };
    struct Area {
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;

        bool operator==(const Area&) const = default;
    };

    OtherProgram();

    // Somebody manages windows that are opened from now on.
    bool windowManagerRuns();
    void whitenDesktop();
    // White, managed and shown; of this WM_CLASS, if any.
    Window openWindow(Area area, const std::string& windowClass = {});
    Window openFullScreenWindow();
    // Asks the window manager, as a task bar does, to raise it and give it the keyboard.
    void activate(Window window);
    void close(Window window);
    // Button presses that the window has had since the last call.
    int takePresses(Window window);
    Window focus();

    void moveTo(int x, int y);
    void press(std::uint8_t button = 1);
    void release(std::uint8_t button = 1);
    void clickAt(int x, int y);
    void typeEscape();

    Colour colourAt(int x, int y);
    // Both in pixels. The first is one rectangle for a window that is not cut.
    std::vector<Area> visibleRegion(Window window);
    std::vector<Area> inputRegion(Window window);

    // Becomes what the desktop has only one of, as window managers, compositors and settings
    // daemons do.
    void claim(const std::string& selection);
    void giveUp(const std::string& selection);
    // Publishes bytes on the window with which it claims.
    void publish(const std::string& property, std::span<const std::uint8_t> bytes);

private:
    struct Close {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    xcb_connection_t* x() const { return connection_.get(); }
    xcb_window_t root() const;
    xcb_atom_t atom(const std::string& name);
    Window create(Area area);
    void show(Window window);
    void settle();
    void fake(std::uint8_t type, std::uint8_t detail, int x = 0, int y = 0);
    std::vector<Area> region(Window window, std::uint8_t kind);

    std::unique_ptr<xcb_connection_t, Close> connection_;
    Window owner_ = 0;
    std::vector<Window> presses_; // One entry for each that nobody has taken yet.
};

} // namespace notch
