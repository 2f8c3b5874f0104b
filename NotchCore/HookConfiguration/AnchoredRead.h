// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/UniqueFd.h"
#include "HookConfiguration/FileSystem.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace notch {

// Reading the host's file without trusting its path. Each directory is opened relative to the one
// before and no symbolic link below the root is followed, so that what was checked is what is read.
// Failures are HookInstaller::Failure in the words of the caller.

// The largest configuration file that is handled.
constexpr std::int64_t maximumConfigurationBytes = 4'194'304;

// An installation says why it stopped; an inspection describes the file in a status line.
struct ReadWording {
    const char* noRoot;
    std::string (*badDirectory)(std::string_view piece, int systemErrno);
    const char* badFile;
    const char* notPlain;
    const char* tooLarge; // Grew past the limit while it was read.
    const char* readFailed;
    const char* changed;
};

enum class MissingDirectories { leave, create };

// A file as it was read; both fields are absent when it does not exist.
struct FileSnapshot {
    std::optional<std::string> data;
    // Changes with every write, rename over and change of mode, also where the bytes stay equal.
    std::optional<std::string> fingerprint;

    bool operator==(const FileSnapshot&) const = default;
};

// The pieces between the slashes, empty ones left out.
std::vector<std::string> pathPieces(std::string_view path);

// A descriptor of the directory; nothing when it or one above it does not exist.
std::optional<UniqueFd> openDirectory(const FileSystem& files,
    const std::vector<std::string>& pieces, MissingDirectories missing, const ReadWording& wording);

// Reads only a plain file of the current user with no second name, at most
// maximumConfigurationBytes long, that does not change meanwhile. Never blocks on a FIFO.
FileSnapshot readConfiguration(
    const FileSystem& files, int directory, const std::string& name, const ReadWording& wording);

} // namespace notch
