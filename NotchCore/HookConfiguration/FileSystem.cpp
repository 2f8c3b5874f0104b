// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "HookConfiguration/FileSystem.h"

#include <cstdio>
#include <fcntl.h>
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

} // namespace notch
