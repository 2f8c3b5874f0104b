// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotchPanel/NotchShape.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace notch {

// Another program on $DISPLAY, with a connection of its own: what it sees of the desktop, it sees
// as any program does, and what a person does with mouse and keyboard comes from it through the
// X Test Extension. Every operation returns when the server has done it.
class OtherProgram {
public:
    using Window = xcb_window_t;
    enum class Region : std::uint8_t { visible = 0, input = 2 }; // xcb_shape_sk_t
    using Colour = std::uint32_t;
    static constexpr Colour black = 0x000000;
    static constexpr Colour white = 0xFFFFFF;

    OtherProgram();

    // White, managed and shown; of this WM_CLASS.
    Window openWindow(const std::string& windowClass = "other");
    Window openFullScreenWindow();
    // Button presses that its windows have had since the last call.
    int takePresses();
    Window focus();

    void moveTo(int x, int y) { fake(XCB_MOTION_NOTIFY, 0, x, y); }
    void press(std::uint8_t button = 1) { fake(XCB_BUTTON_PRESS, button); }
    void release(std::uint8_t button = 1) { fake(XCB_BUTTON_RELEASE, button); }
    void clickAt(int x, int y);
    void typeEscape();

    Colour colourAt(int x, int y);
    // One rectangle for a window that is not cut.
    std::vector<PixelRect> region(Window window, Region region);

    // Becomes what the desktop has only one of, as a settings daemon does, until it ends.
    void claim(const std::string& selection);
    // Publishes bytes on the window with which it claims.
    void publish(const std::string& property, const std::string& bytes);

private:
    xcb_connection_t* x() const { return connection_.get(); }
    const xcb_screen_t& screen() const;
    xcb_atom_t atom(const std::string& name);
    Window create();
    void setProperty(Window window, xcb_atom_t property, xcb_atom_t type, std::string_view bytes);
    Window open(xcb_atom_t property, xcb_atom_t type, std::string_view bytes);
    // The server does requests in order: any reply will do.
    void settle() { focus(); }
    void fake(std::uint8_t type, std::uint8_t detail, int x = 0, int y = 0);

    std::shared_ptr<xcb_connection_t> connection_;
    Window owner_ = 0;
};

} // namespace notch
