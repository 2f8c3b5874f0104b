// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Transport/SocketPath.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>
#include <utility>

namespace notch {
namespace {

constexpr mode_t socketMode = 0600;
constexpr mode_t permissionBits = 0777;
// What the shortest sun_path among the systems we care for holds, with the terminating NUL.
constexpr std::size_t longestPath = 103;

TransportError systemError()
{
    return {TransportError::Code::system, errno};
}

std::optional<sockaddr_un> addressOf(const std::string& path)
{
    if (path.size() > longestPath) {
        errno = ENAMETOOLONG;
        return std::nullopt;
    }
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::ranges::copy(path, address.sun_path);
    return address;
}

// The form in which bind(2) and connect(2) take an address.
const sockaddr* generic(const sockaddr_un& address)
{
    return reinterpret_cast<const sockaddr*>(&address);
}

// True when connect(2) succeeded; errno says why not.
bool connectTo(const UniqueFd& socket, const std::string& path)
{
    const auto address = addressOf(path);
    return address && ::connect(socket.get(), generic(*address), sizeof *address) == 0;
}

timeval timevalOf(Seconds time)
{
    const auto whole = std::floor(time.count());
    return {.tv_sec = static_cast<time_t>(whole),
        .tv_usec = static_cast<suseconds_t>((time.count() - whole) * 1e6)};
}

// poll(2) does not tell when there is room in a backlog. A blocking connect(2) waits for it, no
// longer than SO_SNDTIMEO (socket(7)).
bool connectWithin(const UniqueFd& socket, const std::string& path, Seconds patience)
{
    if (connectTo(socket, path))
        return true;
    const auto timeout = timevalOf(patience);
    const bool mayWait = errno == EAGAIN && patience > Seconds::zero();
    if (!mayWait
        || ::setsockopt(socket.get(), SOL_SOCKET, SO_SNDTIMEO, &timeout, sizeof timeout) != 0)
        return false;
    const int flags = ::fcntl(socket.get(), F_GETFL);
    return ::fcntl(socket.get(), F_SETFL, flags & ~O_NONBLOCK) == 0 && connectTo(socket, path)
        && ::fcntl(socket.get(), F_SETFL, flags) == 0;
}

bool isOwnSocket(const struct stat& status)
{
    return S_ISSOCK(status.st_mode) && status.st_uid == ::getuid();
}

bool isSafeSocket(const struct stat& status)
{
    return isOwnSocket(status) && (status.st_mode & permissionBits) == socketMode;
}

FileIdentity identityOf(const struct stat& status)
{
    return {.device = status.st_dev, .inode = status.st_ino};
}

std::optional<struct stat> statusOf(const std::string& path)
{
    struct stat status { };
    if (::lstat(path.c_str(), &status) != 0)
        return std::nullopt;
    return status;
}

} // namespace

SocketPath::SocketPath(SocketDirectory directory, std::string_view fileName)
    : directory_(std::move(directory))
    , path_(directory_.path() + "/" + std::string(fileName))
{
}

bool SocketPath::isSafe() const
{
    const auto status = directory_.isSafe() ? statusOf(path_) : std::nullopt;
    return status && isSafeSocket(*status);
}

std::optional<FileIdentity> SocketPath::identity() const
{
    const auto status = statusOf(path_);
    return status ? std::optional(identityOf(*status)) : std::nullopt;
}

std::optional<UniqueFd> SocketPath::connect(Seconds patience) const
{
    if (!isSafe())
        return std::nullopt;
    auto socket = makeStreamSocket();
    if (!socket.valid() || !connectWithin(socket, path_, patience) || !isOwnUser(socket))
        return std::nullopt;
    return socket;
}

std::optional<TransportError> SocketPath::removeStale() const
{
    const auto status = statusOf(path_);
    if (!status && errno == ENOENT)
        return std::nullopt;
    if (!status)
        return systemError();
    if (!isSafeSocket(*status))
        return TransportError{TransportError::Code::unsafePath};
    if (const auto error = probe())
        return error;
    return unlinkStale(identityOf(*status));
}

// Nothing when no process listens there.
std::optional<TransportError> SocketPath::probe() const
{
    const auto socket = makeStreamSocket();
    if (!socket.valid())
        return systemError();
    if (connectTo(socket, path_) || errno == EAGAIN || errno == EINPROGRESS)
        return TransportError{TransportError::Code::alreadyRunning};
    return errno == ECONNREFUSED ? std::nullopt : std::optional(systemError());
}

// Everything is asked again: between the first look and now another server may have come.
std::optional<TransportError> SocketPath::unlinkStale(FileIdentity stale) const
{
    const auto status = directory_.isSafe() ? statusOf(path_) : std::nullopt;
    if (!status || identityOf(*status) != stale || !isSafeSocket(*status))
        return TransportError{TransportError::Code::unsafePath};
    return ::unlink(path_.c_str()) == 0 ? std::nullopt : std::optional(systemError());
}

std::optional<TransportError> SocketPath::bind(const UniqueFd& socket) const
{
    const auto address = addressOf(path_);
    if (!address || ::bind(socket.get(), generic(*address), sizeof *address) != 0)
        return systemError();
    return std::nullopt;
}

void SocketPath::remove(FileIdentity own) const
{
    const auto status = directory_.isSafe() ? statusOf(path_) : std::nullopt;
    if (status && identityOf(*status) == own && isOwnSocket(*status))
        ::unlink(path_.c_str());
}

UniqueFd makeStreamSocket()
{
    return UniqueFd(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
}

bool isOwnUser(const UniqueFd& connection)
{
    ucred peer{};
    socklen_t size = sizeof peer;
    return ::getsockopt(connection.get(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0
        && size == sizeof peer && peer.uid == ::getuid();
}

} // namespace notch
