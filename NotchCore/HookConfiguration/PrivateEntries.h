// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/UniqueFd.h"
#include "HookConfiguration/FileSystem.h"

#include <string>

namespace notch {

// Directories and files for the current user alone, in a directory that is open. Their modes
// are 0700 and 0600, independent of the process's umask.

// The mode that a private file has, and the bits that a private entry must not have.
inline constexpr mode_t privateFileMode = 0600;
inline constexpr mode_t othersMask = 077;

// True also when the name is there already; that entry is left as it is. On failure errno says why.
bool makePrivateDirectory(const FileSystem& files, int parent, const char* name);

// A file that must not exist yet, open for writing. Invalid on failure; then no file was made.
UniqueFd createPrivateFile(const FileSystem& files, int directory, const std::string& name);

// The entry belongs to the current user, and nobody else may do anything with it.
bool isPrivate(const struct stat& status);

} // namespace notch
