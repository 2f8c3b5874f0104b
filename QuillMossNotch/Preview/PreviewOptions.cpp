// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Preview/PreviewOptions.h"

#include <algorithm>
#include <string_view>

namespace notch {
namespace {

using Arguments = std::span<const std::string>;

bool contains(Arguments arguments, std::string_view flag)
{
    return std::ranges::find(arguments, flag) != arguments.end();
}

// Empty when nothing follows the flag.
std::string after(Arguments arguments, std::string_view flag)
{
    const auto at = std::ranges::find(arguments, flag);
    return arguments.end() - at > 1 ? *std::next(at) : std::string();
}

} // namespace

std::optional<PreviewOptions> PreviewOptions::parse(Arguments arguments)
{
    if (!contains(arguments, "--render-preview"))
        return std::nullopt;
    return PreviewOptions{
        .path = after(arguments, "--render-preview"),
        .idle = contains(arguments, "--preview-idle"),
        .native = contains(arguments, "--preview-native"),
        .details = contains(arguments, "--preview-details"),
        .receipt = contains(arguments, "--preview-receipt"),
        .compact = contains(arguments, "--preview-compact"),
        .settings = contains(arguments, "--preview-settings"),
    };
}

QuestionPreviewOptions QuestionPreviewOptions::parse(Arguments arguments)
{
    return {
        .path = after(arguments, "--render-question-preview"),
        .isLong = contains(arguments, "--question-long"),
        .failure = contains(arguments, "--question-failure"),
    };
}

std::string completionPreviewPath(Arguments arguments)
{
    return after(arguments, "--render-completion-preview");
}

} // namespace notch
