// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Json.h"
#include "Foundation/UniqueFd.h"
#include "HookConfiguration/AnchoredRead.h"

#include <optional>
#include <string>
#include <string_view>

namespace notch {

// The configuration file during one operation, held by the directory it was found in:
//
//   const auto location = Location::open(files, settingsURL, MissingDirectories::create);
//   const auto backup = withInstallLock(*location, [&] {
//       const auto snapshot = location->read();
//       …
//       auto backupURL = writePrivateBackup(*location, snapshot.data.value_or("{}\n"));
//       replaceConfigurationAtomically(*location, newDocument, snapshot);
//       return backupURL;
//   });
//
// A failure at any step leaves the file as it was. Failures are HookInstaller::Failure.
class Location {
public:
    // Nothing when a directory on the way does not exist and none is to be made.
    static std::optional<Location> open(
        const FileSystem& files, std::string_view url, MissingDirectories missing);

    FileSnapshot read() const;

    const FileSystem& files() const { return *files_; }
    int directory() const { return directory_.get(); }
    const std::string& url() const { return url_; }
    const std::string& name() const { return name_; }

private:
    Location(
        const FileSystem& files, std::string_view url, std::string_view name, UniqueFd directory)
        : files_(&files)
        , url_(url)
        , name_(name)
        , directory_(std::move(directory))
    {
    }

    const FileSystem* files_; // Never null.
    std::string url_;
    std::string name_;
    UniqueFd directory_;
};

// Excludes other operations on the same directory, also of other processes. Never waits: a held
// lock is a failure. The lock file stays. Taking the lock removes the temporary files that killed
// operations left behind.
class InstallLock {
public:
    explicit InstallLock(const Location& location);
    ~InstallLock();
    InstallLock(const InstallLock&) = delete;
    InstallLock& operator=(const InstallLock&) = delete;

private:
    const FileSystem& files_;
    UniqueFd file_;
};

// Runs `body` under the lock and returns what it returns.
template <class Body> auto withInstallLock(const Location& location, const Body& body)
{
    const InstallLock lock(location);
    return body();
}

// The path of a new file with these bytes in the private directory of backups beside the file.
std::string writePrivateBackup(const Location& location, std::string_view bytes);

// Fails unless the path still leads to the same directory and the file is still as it was read.
void verifyUnchanged(const Location& location, const FileSnapshot& oldSnapshot);

// The file becomes `newDocument`, with mode 0600, all at once; a file that another program changed
// or created since it was read is left alone. What remains is the moment between the last look and
// the rename, which no lock shared with the host closes.
void replaceConfigurationAtomically(
    const Location& location, const Json& newDocument, const FileSnapshot& oldSnapshot);

} // namespace notch
