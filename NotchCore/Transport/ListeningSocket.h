// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Result.h"
#include "Foundation/Time.h"
#include "Foundation/UniqueFd.h"
#include "Transport/BridgeSocket.h"
#include "Transport/PollableFlag.h"
#include "Transport/TransportError.h"

namespace notch {

// A server's socket, which owns the path that it made: the destructor removes it, unless another
// file stands there by then.
class ListeningSocket {
public:
    // Prepares the directory, removes a stale socket and listens.
    static Result<ListeningSocket, TransportError> open(BridgeSocket place, int backlog);

    ListeningSocket(ListeningSocket&&) = default;
    ListeningSocket& operator=(ListeningSocket&&) = delete;
    ~ListeningSocket();

    // A non-blocking connection of this same user. Nothing when the time is over, the flag is
    // raised or the connection was none to take.
    std::optional<UniqueFd> accept(const PollableFlag& stop, Seconds atMost) const;

    // False when the path was removed, replaced or has other permissions: no client that checks
    // can find this socket any more.
    bool isReachable() const;

private:
    ListeningSocket(BridgeSocket place, UniqueFd socket, FileIdentity identity);

    BridgeSocket place_;
    UniqueFd socket_;
    FileIdentity identity_; // Of the path, as this socket made it.
};

} // namespace notch
