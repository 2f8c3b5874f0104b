// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/UniqueFd.h"

#include <string>

namespace notch {

// Tells whether another resident application of this user runs, on whatever display, or with
// another runtime directory on the same display.
//
// Both marks end with their holder, however it ends, so that a crash never keeps the next start
// out: a lock of the kernel's and a selection of the X server's. Where the lock cannot be had the
// answer is "no other": two copies then meet at the bridge's socket, which only one of them gets.
class SingleInstance {
public:
    // Claims the place in `directory`, until this object is destroyed or the process ends.
    explicit SingleInstance(const std::string& directory);

    // The user's runtime directory, or a fixed place shared by all users if there is none.
    static std::string defaultDirectory();

    bool otherRuns() const { return otherRuns_; }
    // The same for the toolkit's display, with a mark that lasts until the process ends.
    static bool claimDisplay();

private:
    UniqueFd lock_;
    bool otherRuns_ = false;
};

} // namespace notch
