// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/UniqueFd.h"

#include <string>

namespace notch {

// Tells in poll(2) that something has changed in a directory or about it: an entry has come, gone
// or got other permissions, or the directory itself has (inotify(7)).
class DirectoryWatch {
public:
    // Watches nothing when the system has no watch to give.
    explicit DirectoryWatch(const std::string& path);

    bool works() const { return descriptor_.valid(); }
    // Readable from a change on until clear().
    int descriptor() const { return descriptor_.get(); }
    void clear() const;

private:
    UniqueFd descriptor_;
};

} // namespace notch
