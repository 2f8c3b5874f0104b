// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Time.h"
#include "Foundation/UniqueFd.h"
#include "Transport/SocketDirectory.h"
#include "Transport/TransportError.h"

#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <sys/un.h>

namespace notch {

// Which file a path names at one moment.
struct FileIdentity {
    dev_t device = 0;
    ino_t inode = 0;
    bool operator==(const FileIdentity&) const = default;
};

// The place of one socket in the bridge directory, and what a client or a server may believe of
// what is there. Only the path is held; each question is asked of the file system anew.
class SocketPath {
public:
    SocketPath(SocketDirectory directory, std::string_view fileName);

    const SocketDirectory& directory() const { return directory_; }
    const std::string& path() const { return path_; }

    // The directory is safe, and the path names a socket, no link to one, of the real user, with
    // permission bits exactly 0600.
    bool isSafe() const;
    // The file under the path, if there is one; links are not followed.
    std::optional<FileIdentity> identity() const;

    // A non-blocking connection to a server of this same user at a safe path. The connect(2) of
    // a Unix socket is never "in progress"; what it may have to wait for, as long as `patience`, is
    // room in the server's backlog.
    std::optional<UniqueFd> connect(Seconds patience = Seconds::zero()) const;

    // Makes room for a server: removes a socket that no process listens on any more. Nothing on
    // success; the path is untouched when it names anything else.
    std::optional<TransportError> removeStale() const;
    // Binds a socket to the path. Nothing on success.
    std::optional<TransportError> bind(const UniqueFd& socket) const;
    // Removes the path if it still names `own`, a socket of this user in a safe directory.
    void remove(FileIdentity own) const;

private:
    std::optional<TransportError> probe() const;
    std::optional<TransportError> unlinkStale(FileIdentity stale) const;

    SocketDirectory directory_;
    std::string path_;
};

inline constexpr std::string_view approvalSocketName = "bridge.sock";
inline constexpr std::string_view turnEndSocketName = "completion.sock";

// A Unix stream socket, non-blocking and close-on-exec. Invalid, with errno, when there is none.
UniqueFd makeStreamSocket();

// True when the process at the other end of a connection acts for this process's real user.
bool isOwnUser(const UniqueFd& connection);

} // namespace notch
