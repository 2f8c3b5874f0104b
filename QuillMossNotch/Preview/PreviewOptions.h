// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <span>
#include <string>

namespace notch {

// What pictures of the surfaces shall show, as the command line says it.

struct PreviewOptions {
    std::string path; // Of the PNG file; an existing one is replaced.
    bool idle = false; // No demonstration.
    bool native = false; // The demonstration is a card of the host's window.
    bool details = false; // All parameters are unfolded.
    bool receipt = false; // The demonstration was allowed.
    bool compact = false; // The notch is closed.
    bool settings = false; // The settings view in place of the notch.

    // Nothing without --render-preview. The path is empty when none follows it.
    static std::optional<PreviewOptions> parse(std::span<const std::string> arguments);
};

struct QuestionPreviewOptions {
    std::string path; // Of the PNG file; an existing one stays.
    bool isLong = false; // More text than there is room for.
    bool failure = false; // The host could not be brought to the front.

    static QuestionPreviewOptions parse(std::span<const std::string> arguments);
};

// Of the turn-end reminder's PNG file; an existing one stays.
std::string completionPreviewPath(std::span<const std::string> arguments);

} // namespace notch
