// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "HookConfiguration/FileSystem.h"

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
    // A change of the file is a long row of steps, each of which may end it.
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

    // The retired interception of every command: asking for it is refused.
    enum class InterceptBash { no, yes };

    // `files` is borrowed and must outlive the installer.
    explicit HookInstaller(const FileSystem& files = FileSystem::real())
        : files_(files)
    {
    }

    // What install would add, for the person to read. Shows nothing of the file, which may hold
    // secrets; changes nothing, creates nothing, takes no lock. `source` is an edition's raw value.
    std::string preview(std::string_view settingsURL, std::string_view executableURL,
        std::string_view source, InterceptBash interceptBash) const;
    // Puts the approval hook into the file, in place of any older one. The backup's path.
    std::string install(std::string_view settingsURL, std::string_view executableURL,
        std::string_view source, InterceptBash interceptBash) const;
    // Takes it out again. The backup's path, also when there was nothing to take out.
    std::string uninstall(std::string_view settingsURL) const;

    // The same for the two turn-end hooks, with either variant in place of the other.
    std::string installCompletion(std::string_view settingsURL, std::string_view executableURL,
        CompletionVariant variant) const;
    std::string uninstallCompletion(std::string_view settingsURL) const;
    // True when each of the two events has one own hook and it is this executable's. Changes
    // nothing and takes no lock; fails on an entry that an installation would not touch.
    bool completionInstalled(std::string_view settingsURL, std::string_view executableURL,
        CompletionVariant variant) const;

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

private:
    const FileSystem& files_;
};

} // namespace notch
