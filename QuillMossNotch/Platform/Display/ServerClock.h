// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

#include <memory>
#include <optional>

struct xcb_connection_t;

namespace notch {

// The X server's clock, in whose milliseconds it stamps the events of pointer and keyboard. It has
// a connection of its own, since the toolkit takes every event from the other one. Main thread.
class ServerClock {
public:
    ServerClock();
    ~ServerClock();
    Q_DISABLE_COPY_MOVE(ServerClock)

    // Returns when the server has done everything that the toolkit has asked for so far. Nothing
    // without an X server.
    std::optional<quint32> now() const;

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const;
    };

    std::unique_ptr<xcb_connection_t, Disconnect> connection_; // Null without an X server.
    quint32 window_ = 0; // Never shown.
};

} // namespace notch
