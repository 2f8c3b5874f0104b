// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace notch {

// A regular expression in ICU's syntax, compiled once and used from any thread.
class Pattern {
public:
    // A source that does not compile gives a pattern that matches nothing.
    explicit Pattern(std::string_view source);
    ~Pattern();
    Pattern(const Pattern&) = delete;
    Pattern& operator=(const Pattern&) = delete;

    // The texts of the capture groups of the first match in a UTF-8 text; nothing if there is none.
    // They point into `text`. Every group must be one that takes part in every match.
    std::optional<std::vector<std::string_view>> firstMatch(std::string_view text) const;
    bool isFoundIn(std::string_view text) const { return firstMatch(text).has_value(); }

private:
    struct Compiled; // Keeps ICU out of this header.
    std::unique_ptr<const Compiled> compiled_;
};

} // namespace notch
