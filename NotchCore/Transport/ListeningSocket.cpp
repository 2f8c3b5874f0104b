// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Transport/ListeningSocket.h"

#include "Transport/PollTimeout.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <utility>

namespace notch {
namespace {

constexpr mode_t socketMode = 0600;
// How long to leave a connection in the backlog for which there is no descriptor or memory.
constexpr Seconds shortagePause{0.1};
// How often the caller may look at the path where the system has no watch for its directory.
constexpr Seconds unwatchedInterval{1};

Failure<TransportError> systemFailure()
{
    return Failure{TransportError{TransportError::Code::system, errno}};
}

bool isShortage(int error)
{
    return error == EMFILE || error == ENFILE || error == ENOBUFS || error == ENOMEM;
}

} // namespace

Result<ListeningSocket, TransportError> ListeningSocket::open(SocketPath place, int backlog)
{
    if (const auto error = place.directory().prepare())
        return Failure{*error};
    if (const auto error = place.removeStale())
        return Failure{*error};
    auto socket = makeStreamSocket();
    if (!socket.valid())
        return systemFailure();
    if (const auto error = place.bind(socket))
        return Failure{*error};
    const auto identity = place.identity();
    if (!identity)
        return systemFailure();
    ListeningSocket listening(std::move(place), std::move(socket), *identity);
    // In this order: a path with its final permissions that does not listen yet would look stale to
    // a second server that starts now.
    if (::listen(listening.socket_.get(), backlog) != 0
        || ::chmod(listening.place_.path().c_str(), socketMode) != 0)
        return systemFailure();
    listening.watch_.clear(); // What this function changed itself is no news.
    return listening;
}

ListeningSocket::ListeningSocket(SocketPath place, UniqueFd socket, FileIdentity identity)
    : place_(std::move(place))
    , watch_(place_.directory().path())
    , socket_(std::move(socket))
    , identity_(identity)
{
}

ListeningSocket::~ListeningSocket()
{
    if (!socket_.valid())
        return; // Moved from.
    // While the socket is open, no other file can get its inode.
    place_.remove(identity_);
}

std::optional<UniqueFd> ListeningSocket::accept(const PollableFlag& stop, Seconds atMost) const
{
    if (!waitForConnection(stop, atMost))
        return std::nullopt;
    UniqueFd connection(::accept4(socket_.get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
    if (!connection.valid() && isShortage(errno))
        stop.wait(shortagePause); // The socket stays readable; without this the caller would spin.
    if (!connection.valid() || !isOwnUser(connection))
        return std::nullopt;
    return connection;
}

bool ListeningSocket::waitForConnection(const PollableFlag& stop, Seconds atMost) const
{
    std::array<pollfd, 3> waited{{
        {socket_.get(), POLLIN, 0}, {stop.descriptor(), POLLIN, 0},
        {watch_.descriptor(), POLLIN, 0}, // poll skips a negative one.
    }};
    const auto time = watch_.works() ? atMost : std::min(atMost, unwatchedInterval);
    const int ready = ::poll(waited.data(), waited.size(), pollTimeout(time));
    if (ready > 0 && waited[2].revents != 0)
        watch_.clear();
    return ready > 0 && waited[0].revents != 0 && waited[1].revents == 0;
}

bool ListeningSocket::isReachable() const
{
    return place_.isSafe() && place_.identity() == identity_;
}

} // namespace notch
