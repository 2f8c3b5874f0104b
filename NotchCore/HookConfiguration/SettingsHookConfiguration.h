// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "HookConfiguration/FileSystem.h"
#include "HookConfiguration/QuillMossProfile.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace notch {

// Whether the approval hook is in place for one edition, as a verdict with a text for the person.
// It tells what the file holds, not whether the host has loaded it.
struct SettingsHookConfiguration {
    enum class State : std::uint8_t {
        checking, // Before the first look.
        installed,
        missing,
        reconnect, // An own entry leads to another executable.
        review, // An own entry is not as this system writes it.
        invalid, // The file could not be judged.
    };

    State state = State::checking;
    std::string detail = "正在读取所选版本的配置…";
    // An own entry asks about every command, as this system once did. Absent when invalid.
    std::optional<bool> interceptBash;

    bool operator==(const SettingsHookConfiguration&) const = default;

    // Reads only: takes no lock, creates nothing, waits for nothing. Never throws.
    static SettingsHookConfiguration inspect(std::string_view settingsURL,
        std::string_view executableURL, QuillMossProfile profile,
        const FileSystem& files = FileSystem::real());
};

} // namespace notch
