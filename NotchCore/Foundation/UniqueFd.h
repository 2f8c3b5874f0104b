// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cerrno>
#include <unistd.h>
#include <utility>

namespace notch {

// Owns one file descriptor. Create descriptors close-on-exec and put them in here on the same line.
class UniqueFd {
public:
    UniqueFd() = default;
    explicit UniqueFd(int fd) noexcept
        : fd_(fd)
    {
    }
    UniqueFd(UniqueFd&& other) noexcept
        : fd_(std::exchange(other.fd_, -1))
    {
    }
    UniqueFd& operator=(UniqueFd&& other) noexcept
    {
        UniqueFd moved(std::move(other));
        std::swap(fd_, moved.fd_);
        return *this;
    }
    ~UniqueFd()
    {
        if (fd_ < 0)
            return;
        const int savedErrno = errno; // Clean-up must not hide why we got here.
        ::close(fd_);
        errno = savedErrno;
    }

    bool valid() const { return fd_ >= 0; }
    int get() const { return fd_; }
    [[nodiscard]] int release() { return std::exchange(fd_, -1); }

private:
    int fd_ = -1;
};

} // namespace notch
