// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Transport/SocketDirectory.h"

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace notch {
namespace {

constexpr mode_t directoryMode = 0700;
constexpr mode_t permissionBits = 0777;

} // namespace

SocketDirectory SocketDirectory::ofUser()
{
    return SocketDirectory("/tmp/quillmoss-notch-" + std::to_string(::getuid()));
}

bool SocketDirectory::isSafe() const
{
    struct stat status { };
    return ::lstat(path_.c_str(), &status) == 0 && S_ISDIR(status.st_mode)
        && status.st_uid == ::getuid() && (status.st_mode & permissionBits) == directoryMode;
}

std::optional<TransportError> SocketDirectory::prepare() const
{
    if (::mkdir(path_.c_str(), directoryMode) != 0 && errno != EEXIST)
        return TransportError{TransportError::Code::system, errno};
    if (!isSafe())
        return TransportError{TransportError::Code::unsafePath};
    return std::nullopt;
}

} // namespace notch
