// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Foundation/Account.h"

#include <array>
#include <cerrno>
#include <climits>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace notch {
namespace {

constexpr std::size_t firstEntryBytes = 1024;
constexpr std::size_t maximumEntryBytes = 1 << 20; // No honest account entry comes near.

constexpr const char* runningExecutable = "/proc/self/exe";

} // namespace

std::optional<std::string> homeDirectory()
{
    std::vector<char> text;
    passwd entry{};
    passwd* found = nullptr;
    int error = ERANGE;
    // getpwuid_r(3) answers ERANGE when the entry does not fit.
    for (auto size = firstEntryBytes; error == ERANGE && size <= maximumEntryBytes; size *= 2) {
        text.resize(size);
        error = ::getpwuid_r(::getuid(), &entry, text.data(), text.size(), &found);
    }
    if (error != 0 || !found || !found->pw_dir || found->pw_dir[0] != '/')
        return std::nullopt;
    return found->pw_dir;
}

std::optional<std::string> executablePath()
{
    std::array<char, PATH_MAX> path{};
    const auto length = ::readlink(runningExecutable, path.data(), path.size());
    if (length <= 0 || static_cast<std::size_t>(length) >= path.size())
        return std::nullopt;
    // The link of a deleted file reads "… (deleted)", which is a possible file name too: only the
    // file itself tells.
    struct stat named { };
    struct stat running { };
    if (::stat(path.data(), &named) != 0 || ::stat(runningExecutable, &running) != 0
        || named.st_dev != running.st_dev || named.st_ino != running.st_ino)
        return std::nullopt;
    return path.data();
}

} // namespace notch
