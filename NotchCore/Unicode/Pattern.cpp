// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Unicode/Pattern.h"

#include <unicode/regex.h>

#include <utility>

namespace notch {

struct Pattern::Compiled {
    std::unique_ptr<icu::RegexPattern> pattern;
};

Pattern::Pattern(std::string_view source)
{
    auto status = U_ZERO_ERROR;
    const auto text = icu::UnicodeString::fromUTF8(
        icu::StringPiece(source.data(), static_cast<int32_t>(source.size())));
    std::unique_ptr<icu::RegexPattern> pattern(icu::RegexPattern::compile(text, 0, status));
    if (U_SUCCESS(status))
        compiled_.reset(new Compiled{std::move(pattern)});
}

Pattern::~Pattern() = default;

std::optional<std::vector<std::string_view>> Pattern::firstMatch(std::string_view text) const
{
    if (!compiled_)
        return std::nullopt;
    auto status = U_ZERO_ERROR;
    const std::unique_ptr<icu::RegexMatcher> matcher(compiled_->pattern->matcher(status));
    // Over the UTF-8 itself, so that positions are bytes of `text`.
    const icu::LocalUTextPointer input(
        utext_openUTF8(nullptr, text.data(), static_cast<int64_t>(text.size()), &status));
    if (U_FAILURE(status))
        return std::nullopt;
    matcher->reset(input.getAlias());
    if (!matcher->find(status) || U_FAILURE(status))
        return std::nullopt; // Also when ICU's own stack limit ends the search.
    std::vector<std::string_view> groups;
    for (int32_t group = 1; group <= matcher->groupCount(); ++group) {
        const auto begin = static_cast<std::size_t>(matcher->start64(group, status));
        const auto end = static_cast<std::size_t>(matcher->end64(group, status));
        groups.push_back(text.substr(begin, end - begin));
    }
    return groups;
}

} // namespace notch
