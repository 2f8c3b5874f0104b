// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Result.h"
#include "Foundation/Time.h"
#include "Foundation/UniqueFd.h"
#include "Transport/DirectoryWatch.h"
#include "Transport/PollableFlag.h"
#include "Transport/SocketPath.h"
#include "Transport/TransportError.h"

namespace notch {

// A server's socket, which owns the path that it made: the destructor removes it, unless it names
// another file by then.
class ListeningSocket {
public:
    // Prepares the directory, removes a stale socket and listens.
    static Result<ListeningSocket, TransportError> open(SocketPath place, int backlog);

    ListeningSocket(ListeningSocket&&) = default;
    ListeningSocket& operator=(ListeningSocket&&) = delete;
    ~ListeningSocket();

    // A non-blocking connection of this same user. Nothing when the time is over, the flag is
    // raised, the connection is not one to take, or isReachable() may have changed.
    std::optional<UniqueFd> accept(const PollableFlag& stop, Seconds atMost = forever) const;

    // False when the path was removed, replaced or has other permissions: no client that checks
    // can find this socket any more.
    bool isReachable() const;

private:
    static constexpr Seconds forever{3600}; // Waking up once an hour costs nothing.

    ListeningSocket(SocketPath place, UniqueFd socket, FileIdentity identity);
    bool waitForConnection(const PollableFlag& stop, Seconds atMost) const;

    SocketPath place_;
    DirectoryWatch watch_; // Of the directory with the path.
    UniqueFd socket_;
    FileIdentity identity_; // Of the path, as this socket made it.
};

} // namespace notch
