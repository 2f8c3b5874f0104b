// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Interaction/NotchInteraction.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace notch {

// Moving between requests that wait. Switching selects and never decides.
struct SwitcherContent {
    struct Entry {
        std::string id;
        Date expiresAt; // With the ID it tells one request from another.
        std::string label; // What the request is about to do, and where.

        bool operator==(const Entry&) const = default;
    };

    std::string text; // Position and count.
    std::vector<Entry> entries;
    std::size_t position = 0; // Of the request on show, from 0.

    // Nothing while fewer than two wait. Labels that are among those known are taken from there:
    // to make one means to read a request's whole input.
    static std::optional<SwitcherContent> of(
        const NotchInteraction& interaction, std::span<const Entry> known);
};

inline constexpr std::string_view previousRequestLabel = "上一条请求";
inline constexpr std::string_view nextRequestLabel = "下一条请求";
inline constexpr std::string_view switchToolTip = "切换待确认请求，不批量允许";
inline constexpr std::string_view requestListLabel = "选择请求";

} // namespace notch
