// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Entry/Configure.h"

#include "Entry/Change.h"
#include "Entry/Terminal.h"
#include "Foundation/Account.h"
#include "HookConfiguration/HookInstaller.h"
#include "HookConfiguration/QuillMossProfile.h"

#include <algorithm>
#include <array>
#include <string>

namespace notch {
namespace {

constexpr int success = 0;
constexpr int failure = 1;

constexpr std::string_view failed = "Configuration failed: ";

// Options that --configure takes, and those of a hook's command line, which it passes over.
constexpr std::array<std::string_view, 7> knownOptions{"--configure", "--apply", "--remove",
    "--compat-bash", HookInstaller::hookFlag, HookInstaller::sourceFlag, HookInstaller::ownerFlag};

int remove(const std::string& settings)
{
    const auto backup = HookInstaller().uninstall(settings);
    return reportDone({"Removed this application's hooks. Backup: ", backup, "\n"});
}

// A mistyped --apply would otherwise look like one that worked.
void nameUnknownOption(const Arguments& arguments)
{
    const auto isKnown = [](std::string_view word) {
        return !word.starts_with('-')
            || std::ranges::find(knownOptions, word) != knownOptions.end();
    };
    const auto list = arguments.list();
    const auto unknown = std::find_if_not(list.begin(), list.end(), isKnown);
    if (unknown != list.end())
        complain({"Unknown option ", *unknown, ": nothing was written.\n"});
}

int previewAndApply(const Arguments& arguments, const std::string& settings,
    const std::string& executable, std::string_view source)
{
    using InterceptBash = HookInstaller::InterceptBash;
    const HookInstaller installer;
    const auto interceptBash =
        arguments.contains("--compat-bash") ? InterceptBash::yes : InterceptBash::no;
    if (!print({installer.preview(settings, executable, source, interceptBash), "\n"}))
        return complain({failed, "standard output cannot be written; nothing was changed.\n"});
    if (!arguments.contains("--apply")) {
        nameUnknownOption(arguments);
        return success;
    }
    const auto backup = installer.install(settings, executable, source, interceptBash);
    return reportDone({"Installed. Restart QuillMoss to load hooks. Backup: ", backup, "\n"});
}

int configureEdition(const Arguments& arguments)
{
    const auto edition = arguments.after("--configure").value_or("");
    const auto profile = parseQuillMossProfile(edition);
    const auto executable = executablePath();
    if (!profile || !executable)
        return complain({"Usage: QuillMossNotch --configure quillmoss|quillmossAI "
                         "[--apply|--remove]\n"});
    const bool removal = arguments.contains("--remove");
    if (removal && arguments.contains("--apply"))
        return failure; // A contradiction: nothing is said and nothing is touched.
    const auto settings = settingsURL(*profile);
    return removal ? remove(settings) : previewAndApply(arguments, settings, *executable, edition);
}

} // namespace

int configure(const Arguments& arguments)
{
    return runChange(failed, [&] { return configureEdition(arguments); });
}

} // namespace notch
