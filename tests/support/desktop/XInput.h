// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <memory>

struct xcb_connection_t;

namespace notch {

// A person's mouse and keyboard on $DISPLAY: what it sends comes from the X server like that of
// real devices (X Test Extension). Each operation returns when the server has done it.
class XInput {
public:
    XInput();

    bool isConnected() const;
    void moveTo(int x, int y);
    void press();
    void release();
    void clickAt(int x, int y);
    void typeEscape();
    // The window that gets the keys now.
    std::uint32_t focusedWindow();

private:
    struct Close {
        void operator()(xcb_connection_t* connection) const;
    };
    void send(std::uint8_t type, std::uint8_t detail, int x = 0, int y = 0);

    std::unique_ptr<xcb_connection_t, Close> connection_;
};

} // namespace notch
