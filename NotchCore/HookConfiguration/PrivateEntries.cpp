// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "HookConfiguration/PrivateEntries.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace notch {
namespace {

constexpr mode_t privateDirectoryMode = 0700;

} // namespace

bool makePrivateDirectory(const FileSystem& files, int parent, const char* name)
{
    if (files.mkdirat(parent, name, privateDirectoryMode) != 0)
        return errno == EEXIST;
    return files.fchmodat(parent, name, privateDirectoryMode) == 0;
}

UniqueFd createPrivateFile(const FileSystem& files, int directory, const std::string& name)
{
    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    UniqueFd file(files.openat(directory, name.c_str(), flags, privateFileMode));
    if (!file.valid() || files.fchmod(file.get(), privateFileMode) == 0)
        return file;
    files.unlinkat(directory, name.c_str());
    return {};
}

bool isPrivate(const struct stat& status)
{
    return status.st_uid == ::geteuid() && (status.st_mode & othersMask) == 0;
}

} // namespace notch
