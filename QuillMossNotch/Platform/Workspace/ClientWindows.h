// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>
#include <string>

struct xcb_connection_t;

namespace notch {

// Other programs' windows, as the window manager lists them (Extended Window Manager Hints 1.5).
// Without a window manager there are none.
class ClientWindows {
public:
    using Window = std::uint32_t;

    // Borrowed; must outlive this object.
    explicit ClientWindows(xcb_connection_t* connection);

    // The first window with this name, in any letter case, as either part of its WM_CLASS.
    std::optional<Window> ofClass(const std::string& name) const;
    // Asks the window manager to raise it and give it the keyboard.
    void activate(Window window) const;

private:
    xcb_connection_t* connection_;
};

} // namespace notch
