// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Services/Preferences.h"

#include <span>
#include <string>

namespace notch {

// What the command line asks of a resident start. Whatever else it holds is ignored.
struct LaunchOptions {
    bool enableNativeApprovals = false;
    bool enableCompletionReminders = false;
    bool demo = false;

    bool operator==(const LaunchOptions&) const = default;

    static LaunchOptions parse(std::span<const std::string> arguments);
    // Switches on what was asked for; never off.
    void storeIn(Preferences& preferences) const;
};

} // namespace notch
