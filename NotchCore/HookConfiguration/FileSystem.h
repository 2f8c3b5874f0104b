// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string>
#include <sys/stat.h>
#include <sys/types.h>
#include <vector>

namespace notch {

// The system calls by which the host's file is read and changed, each as its man page says. They
// are virtual so that a test can let any of them fail, or let another program act between two.
class FileSystem {
public:
    static const FileSystem& real();

    virtual ~FileSystem() = default;

    virtual int open(const char* path, int flags) const;
    virtual int openat(int directory, const char* name, int flags, mode_t mode = 0) const;
    virtual int mkdirat(int directory, const char* name, mode_t mode) const;
    virtual int fchmod(int fd, mode_t mode) const;
    // Never through a symbolic link.
    virtual int fchmodat(int directory, const char* name, mode_t mode) const;
    virtual int fstat(int fd, struct stat* status) const;
    virtual ssize_t read(int fd, void* buffer, std::size_t size) const;
    virtual ssize_t write(int fd, const void* bytes, std::size_t size) const;
    virtual int fsync(int fd) const;
    virtual int flock(int fd, int operation) const;
    virtual int renameat(int directory, const char* from, const char* to) const;
    // renameat2(2) with RENAME_NOREPLACE.
    virtual int renameExclusively(int directory, const char* from, const char* to) const;
    virtual int linkat(int directory, const char* from, const char* to) const;
    virtual int unlinkat(int directory, const char* name) const;
    // The names in the directory, in no order; none when it cannot be listed.
    virtual std::vector<std::string> names(int directory) const;
};

} // namespace notch
