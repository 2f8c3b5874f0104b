// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "HookConfiguration/ConfigureCommand.h"

#include "HookConfiguration/QuillMossProfile.h"

#include <algorithm>

namespace notch {
namespace {

using Arguments = std::span<const std::string_view>;

bool contains(Arguments arguments, std::string_view flag)
{
    return std::ranges::find(arguments, flag) != arguments.end();
}

std::optional<QuillMossProfile> editionBehind(Arguments arguments, std::string_view flag)
{
    const auto position = std::ranges::find(arguments, flag);
    if (position == arguments.end() || position + 1 == arguments.end())
        return std::nullopt;
    return parseQuillMossProfile(*(position + 1));
}

void remove(CommandOutcome& outcome, const HookInstaller& installer, const std::string& settings)
{
    const auto backup = installer.uninstall(settings);
    outcome.output += "Removed this application's hooks. Backup: " + backup + '\n';
}

void showAndApply(CommandOutcome& outcome, const HookInstaller& installer,
    const std::string& settings, const std::string& executable, std::string_view source,
    Arguments arguments)
{
    using InterceptBash = HookInstaller::InterceptBash;
    const auto interceptBash =
        contains(arguments, "--compat-bash") ? InterceptBash::yes : InterceptBash::no;
    outcome.output += installer.preview(settings, executable, source, interceptBash) + '\n';
    if (!contains(arguments, "--apply"))
        return;
    const auto backup = installer.install(settings, executable, source, interceptBash);
    outcome.output += "Installed. Restart QuillMoss to load hooks. Backup: " + backup + '\n';
}

} // namespace

CommandOutcome runConfigure(Arguments arguments, const std::optional<std::string>& executable,
    const HookInstaller& installer)
{
    CommandOutcome outcome;
    const auto edition = editionBehind(arguments, "--configure");
    if (!edition || !executable) {
        outcome.errors =
            "Usage: QuillMossNotch --configure quillmoss|quillmossAI [--apply|--remove]\n";
        return outcome;
    }
    const bool removal = contains(arguments, "--remove");
    if (removal && contains(arguments, "--apply"))
        return outcome; // Contradiction: nothing is said and nothing is touched.
    try {
        const auto settings = settingsURL(*edition);
        if (removal)
            remove(outcome, installer, settings);
        else
            showAndApply(outcome, installer, settings, *executable, rawValue(*edition), arguments);
        outcome.status = 0;
    } catch (const HookInstaller::Failure& failure) {
        outcome.errors = "Configuration failed: " + failure.message + '\n';
    }
    return outcome;
}

} // namespace notch
