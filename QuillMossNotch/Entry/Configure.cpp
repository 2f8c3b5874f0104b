// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Entry/Configure.h"

#include "Entry/Terminal.h"
#include "Foundation/Account.h"
#include "HookConfiguration/HookInstaller.h"
#include "HookConfiguration/QuillMossProfile.h"

#include <string>

namespace notch {
namespace {

constexpr int success = 0;
constexpr int failure = 1;

void remove(const std::string& settings)
{
    const auto backup = HookInstaller().uninstall(settings);
    print("Removed this application's hooks. Backup: " + backup + '\n');
}

void previewAndApply(const Arguments& arguments, const std::string& settings,
    const std::string& executable, std::string_view source)
{
    using InterceptBash = HookInstaller::InterceptBash;
    const HookInstaller installer;
    const auto interceptBash =
        arguments.contains("--compat-bash") ? InterceptBash::yes : InterceptBash::no;
    print(installer.preview(settings, executable, source, interceptBash) + '\n');
    if (!arguments.contains("--apply"))
        return;
    const auto backup = installer.install(settings, executable, source, interceptBash);
    print("Installed. Restart QuillMoss to load hooks. Backup: " + backup + '\n');
}

} // namespace

int configure(const Arguments& arguments)
{
    const auto edition = arguments.behind("--configure").value_or("");
    const auto profile = parseQuillMossProfile(edition);
    const auto executable = executablePath();
    if (!profile || !executable)
        return complain("Usage: QuillMossNotch --configure quillmoss|quillmossAI "
                        "[--apply|--remove]\n");
    const bool removal = arguments.contains("--remove");
    if (removal && arguments.contains("--apply"))
        return failure; // A contradiction: nothing is said and nothing is touched.
    try {
        const auto settings = settingsURL(*profile);
        if (removal)
            remove(settings);
        else
            previewAndApply(arguments, settings, *executable, edition);
        return success;
    } catch (const HookInstaller::Failure& stopped) {
        return complain("Configuration failed: " + stopped.message + '\n');
    }
}

} // namespace notch
