// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/SingleInstance/SingleInstance.h"

#include "Platform/Display/X11.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace notch {

namespace {

bool isOwnDirectory(const std::string& path)
{
    struct stat status { };
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode)
        && status.st_uid == ::getuid();
}

// In a shared directory another user may have put something under this name.
bool isOwnFile(int fd)
{
    struct stat status { };
    return ::fstat(fd, &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == ::getuid();
}

std::string lockPath(const std::string& directory)
{
    return directory + "/local.quillmoss.notch-" + std::to_string(::getuid()) + ".lock";
}

} // namespace

SingleInstance::SingleInstance(const std::string& directory)
    : lock_(::open(lockPath(directory).c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600))
{
    if (lock_.valid() && isOwnFile(lock_.get()))
        otherRuns_ = ::flock(lock_.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

bool SingleInstance::claimDisplay()
{
    const auto name = "_LOCAL_QUILLMOSS_NOTCH_" + std::to_string(::getuid());
    return !x11::connection() || x11::claimSelection(name.c_str());
}

std::string SingleInstance::defaultDirectory()
{
    // pam_systemd(8) makes it; a start from cron or over ssh may lack the variable, not the place.
    const auto usual = "/run/user/" + std::to_string(::getuid());
    const char* const given = std::getenv("XDG_RUNTIME_DIR");
    if (given && isOwnDirectory(given))
        return given;
    return isOwnDirectory(usual) ? usual : "/tmp";
}

} // namespace notch
