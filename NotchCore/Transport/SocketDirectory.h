// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Transport/TransportError.h"

#include <optional>
#include <string>
#include <utility>

namespace notch {

// The private directory of this user's sockets. It lies in /tmp, where anybody may have made it
// first: nothing in it counts unless isSafe().
class SocketDirectory {
public:
    explicit SocketDirectory(std::string path)
        : path_(std::move(path))
    {
    }
    // The one that the host's hooks and the resident application share.
    static SocketDirectory ofUser();

    const std::string& path() const { return path_; }

    // A directory itself, no link to one, of the real user, with permission bits exactly 0700.
    bool isSafe() const;
    // Makes it unless it exists, and checks it. Nothing on success.
    std::optional<TransportError> prepare() const;

private:
    std::string path_;
};

} // namespace notch
