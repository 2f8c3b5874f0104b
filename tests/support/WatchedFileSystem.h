// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "HookConfiguration/FileSystem.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>

namespace notch {

// The real calls, each of which a test sees just before it happens and may let fail. Only fsync
// does nothing: no test here loses power.
class WatchedFileSystem : public FileSystem {
public:
    struct Call {
        int number = 0; // From 1.
        std::string_view name;
    };
    struct Fault {
        int systemErrno = 0; // Not 0: the call does nothing and fails with it.
        std::size_t atMost = SIZE_MAX; // A read or write moves no more bytes than this.
    };
    using Watch = std::function<Fault(const Call&)>;

    WatchedFileSystem() = default;
    explicit WatchedFileSystem(Watch watch)
        : watch_(std::move(watch))
    {
    }

    int open(const char* path, int flags) const override
    {
        return watched("open", [&] { return FileSystem::open(path, flags); });
    }
    int openat(int directory, const char* name, int flags, mode_t mode) const override
    {
        return watched("openat", [&] { return FileSystem::openat(directory, name, flags, mode); });
    }
    int mkdirat(int directory, const char* name, mode_t mode) const override
    {
        return watched("mkdirat", [&] { return FileSystem::mkdirat(directory, name, mode); });
    }
    int fchmod(int fd, mode_t mode) const override
    {
        return watched("fchmod", [&] { return FileSystem::fchmod(fd, mode); });
    }
    int fchmodat(int directory, const char* name, mode_t mode) const override
    {
        return watched("fchmodat", [&] { return FileSystem::fchmodat(directory, name, mode); });
    }
    int fstat(int fd, struct stat* status) const override
    {
        return watched("fstat", [&] { return FileSystem::fstat(fd, status); });
    }
    ssize_t read(int fd, void* buffer, std::size_t size) const override
    {
        return watched("read", [&] { return FileSystem::read(fd, buffer, limited(size)); });
    }
    ssize_t write(int fd, const void* bytes, std::size_t size) const override
    {
        return watched("write", [&] { return FileSystem::write(fd, bytes, limited(size)); });
    }
    int fsync(int) const override
    {
        return watched("fsync", [] { return 0; });
    }
    int flock(int fd, int operation) const override
    {
        return watched("flock", [&] { return FileSystem::flock(fd, operation); });
    }
    int renameat(int directory, const char* from, const char* to) const override
    {
        return watched("renameat", [&] { return FileSystem::renameat(directory, from, to); });
    }
    int renameExclusively(int directory, const char* from, const char* to) const override
    {
        return watched("renameExclusively",
            [&] { return FileSystem::renameExclusively(directory, from, to); });
    }
    int linkat(int directory, const char* from, const char* to) const override
    {
        return watched("linkat", [&] { return FileSystem::linkat(directory, from, to); });
    }
    int unlinkat(int directory, const char* name) const override
    {
        return watched("unlinkat", [&] { return FileSystem::unlinkat(directory, name); });
    }

private:
    template <class Real>
    auto watched(std::string_view name, const Real& real) const -> decltype(real())
    {
        fault_ = watch_({++calls_, name});
        if (fault_.systemErrno == 0)
            return real();
        errno = fault_.systemErrno;
        return -1;
    }
    std::size_t limited(std::size_t size) const { return std::min(size, fault_.atMost); }

    Watch watch_ = [](const Call&) { return Fault{}; };
    mutable Fault fault_;
    mutable int calls_ = 0;
};

} // namespace notch
