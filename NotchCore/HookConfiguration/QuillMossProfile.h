// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace notch {

// The host's editions, the one type for them. They share one application identity; what tells them
// apart is the word in a hook's --source and the directory of their settings.
enum class QuillMossProfile : std::uint8_t { quillmoss, quillmossAI };

inline constexpr std::array allQuillMossProfiles{
    QuillMossProfile::quillmoss,
    QuillMossProfile::quillmossAI,
};

// "quillmoss" or "quillmossAI": what commands, requests and the command line carry.
std::string_view rawValue(QuillMossProfile profile);
// Nothing for any other word; the case of letters counts.
std::optional<QuillMossProfile> parseQuillMossProfile(std::string_view rawValue);

// For people.
std::string_view displayName(QuillMossProfile profile);

// Absolute path of the edition's settings.json in the current user's home, looked up afresh at each
// call. Empty when there is no home; every operation refuses an empty path.
std::string settingsURL(QuillMossProfile profile);

} // namespace notch
