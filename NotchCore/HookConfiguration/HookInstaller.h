// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <string_view>

namespace notch {

// This system's hooks in the host's settings.json.
//
// Every operation either succeeds or throws Failure, and a failure leaves the file byte for byte as
// it was. URLs are absolute paths.
class HookInstaller {
public:
    // The one exception of this program: a change of the file is a long row of steps, each of which
    // may end it.
    class Failure : public std::exception {
    public:
        explicit Failure(std::string text)
            : message(std::move(text))
        {
        }
        const char* what() const noexcept override { return message.c_str(); }

        // One line for the person; never any text of the file.
        const std::string message;
    };

    // What marks a command line as this system's own.
    static constexpr std::string_view ownerMarker = "quillmoss-notch-v1";
    static constexpr std::string_view completionOwnerMarker = "quillmoss-notch-completion-v1";
    static constexpr std::string_view probeOwnerMarker = "quillmoss-notch-completion-probe-v1";
    static constexpr std::string_view hookFlag = "--hook";
    static constexpr std::string_view completionHookFlag = "--completion-hook";
    static constexpr std::string_view probeFlag = "--completion-probe";
    static constexpr std::string_view sourceFlag = "--source";
    static constexpr std::string_view ownerFlag = "--owner-marker";
    // The host's limits for the hooks, in seconds.
    static constexpr std::int64_t approvalTimeout = 60;
    static constexpr std::int64_t completionTimeout = 2;

    // Two kinds of turn-end hook; the probe is an older, temporary form.
    enum class CompletionVariant { normal, probe };

    // `argument` as one word of a POSIX shell.
    static std::string shellQuote(std::string_view argument);
    // The approval hook's command line. `source` is an edition's raw value.
    static std::string approvalCommand(std::string_view executableURL, std::string_view source);
    static std::string completionCommand(std::string_view executableURL, CompletionVariant variant);

    // Executable, flag, "--source", source, "--owner-marker", marker.
    using CommandArguments = std::array<std::string, 6>;
    // The arguments of `command` if it is, character for character, a command line that this system
    // writes, from an executable at any path; nothing for every other text. Without
    // `expectedSource` either edition will do.
    static std::optional<CommandArguments> ownedArguments(std::string_view command,
        std::string_view flag, std::string_view marker,
        std::optional<std::string_view> expectedSource = {});
    static bool matchesOwnedCommand(std::string_view command, std::string_view flag,
        std::string_view marker, std::optional<std::string_view> expectedSource = {})
    {
        return ownedArguments(command, flag, marker, expectedSource).has_value();
    }
};

} // namespace notch
