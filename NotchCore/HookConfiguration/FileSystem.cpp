// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "HookConfiguration/FileSystem.h"

#include "Foundation/UniqueFd.h"

#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/file.h>
#include <unistd.h>

namespace notch {

const FileSystem& FileSystem::real()
{
    static const FileSystem files;
    return files;
}

int FileSystem::open(const char* path, int flags) const
{
    return ::open(path, flags);
}

int FileSystem::openat(int directory, const char* name, int flags, mode_t mode) const
{
    return ::openat(directory, name, flags, mode);
}

int FileSystem::mkdirat(int directory, const char* name, mode_t mode) const
{
    return ::mkdirat(directory, name, mode);
}

int FileSystem::fchmod(int fd, mode_t mode) const
{
    return ::fchmod(fd, mode);
}

int FileSystem::fchmodat(int directory, const char* name, mode_t mode) const
{
    return ::fchmodat(directory, name, mode, AT_SYMLINK_NOFOLLOW);
}

int FileSystem::fstat(int fd, struct stat* status) const
{
    return ::fstat(fd, status);
}

ssize_t FileSystem::read(int fd, void* buffer, std::size_t size) const
{
    return ::read(fd, buffer, size);
}

ssize_t FileSystem::write(int fd, const void* bytes, std::size_t size) const
{
    return ::write(fd, bytes, size);
}

int FileSystem::fsync(int fd) const
{
    return ::fsync(fd);
}

int FileSystem::flock(int fd, int operation) const
{
    return ::flock(fd, operation);
}

int FileSystem::renameat(int directory, const char* from, const char* to) const
{
    return ::renameat(directory, from, directory, to);
}

int FileSystem::renameExclusively(int directory, const char* from, const char* to) const
{
    return ::renameat2(directory, from, directory, to, RENAME_NOREPLACE);
}

int FileSystem::linkat(int directory, const char* from, const char* to) const
{
    return ::linkat(directory, from, directory, to, 0);
}

int FileSystem::unlinkat(int directory, const char* name) const
{
    return ::unlinkat(directory, name, 0);
}

std::vector<std::string> FileSystem::names(int directory) const
{
    struct Close {
        void operator()(DIR* list) const { ::closedir(list); }
    };
    // A descriptor of its own: reading moves the position, and closing the list closes it.
    UniqueFd own(::openat(directory, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const std::unique_ptr<DIR, Close> list(own.valid() ? ::fdopendir(own.get()) : nullptr);
    if (!list)
        return {};
    static_cast<void>(own.release());
    std::vector<std::string> found;
    while (const auto* entry = ::readdir(list.get()))
        found.emplace_back(entry->d_name);
    return found;
}

} // namespace notch
