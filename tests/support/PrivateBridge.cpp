// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "support/PrivateBridge.h"

#include "Bridge/BridgeDirectory.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

namespace notch {
namespace {

bool writeFile(const char* path, const std::string& text)
{
    const int file = ::open(path, O_WRONLY | O_CLOEXEC);
    const bool written =
        ::write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    ::close(file);
    return written;
}

// Who is not root becomes one in a user namespace of its own, under its own number
// (user_namespaces(7)).
bool enterNamespace()
{
    const auto user = std::to_string(::getuid());
    const auto group = std::to_string(::getgid());
    if (::getuid() == 0)
        return ::unshare(CLONE_NEWNS) == 0;
    return ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && writeFile("/proc/self/setgroups", "deny")
        && writeFile("/proc/self/uid_map", user + " " + user + " 1")
        && writeFile("/proc/self/gid_map", group + " " + group + " 1");
}

bool coverDirectory(const char* path)
{
    if (::mkdir(path, 0700) != 0 && errno != EEXIST)
        return false;
    return ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
        && ::mount("notch-bridge", path, "tmpfs", MS_NOSUID | MS_NODEV, "mode=0700") == 0;
}

} // namespace

std::string enterPrivateBridge()
{
    if (enterNamespace() && coverDirectory(BridgeDirectory::ofUser().path().c_str()))
        return {};
    return std::string("no mount namespace: ") + std::strerror(errno);
}

} // namespace notch
