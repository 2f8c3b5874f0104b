// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "HookConfiguration/HookInstaller.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace notch {

// What a command of the terminal has to say.
struct CommandOutcome {
    int status = 1; // Of the process.
    std::string output; // For standard output.
    std::string errors; // For the error stream.

    bool operator==(const CommandOutcome&) const = default;
};

// --configure quillmoss|quillmossAI [--apply|--remove]: shows, installs or removes the approval
// hook in the edition's settings of the current user. Without --apply or --remove it only shows.
// `arguments` is the whole list, in which "--configure" must occur; `executable` is the path of the
// running program, if it is known.
CommandOutcome runConfigure(std::span<const std::string_view> arguments,
    const std::optional<std::string>& executable, const HookInstaller& installer = HookInstaller());

} // namespace notch
