// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "support/PrivateBridge.h"

#include "Transport/SocketDirectory.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

namespace notch {
namespace {

bool writeFile(const char* path, const std::string& text)
{
    return static_cast<bool>(std::ofstream(path) << text << std::flush); // In one write(2).
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
    if (enterNamespace() && coverDirectory(SocketDirectory::ofUser().path().c_str()))
        return {};
    return std::string("no mount namespace: ") + std::strerror(errno);
}

} // namespace notch
