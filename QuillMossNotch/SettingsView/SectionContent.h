// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Services/Preferences.h"
#include "Style/Symbol.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace notch {

// How a line of the settings is coloured; the colours follow the desktop's theme.
enum class Tone : std::uint8_t { plain, secondary, good, caution, bad };

// A line with a symbol before it.
struct StatusLine {
    Symbol symbol = Symbol::none;
    Tone tone = Tone::plain; // Of the symbol.
    std::string_view text;

    bool operator==(const StatusLine&) const = default;
};

// A switch, or a note where there is no preference.
struct SectionRow {
    std::optional<Preference> preference;
    std::string_view text;
};

// What a section says at all times, in two parts: what it shows of the present state is between
// them.
struct SectionContent {
    Symbol symbol = Symbol::none;
    std::string_view title;
    std::span<const SectionRow> rows;
    std::span<const SectionRow> lastRows;
};

const SectionContent& interactionContent();
const SectionContent& nativeContent();
const SectionContent& turnEndContent();
const SectionContent& configurationContent();

} // namespace notch
