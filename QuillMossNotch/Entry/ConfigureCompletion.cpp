// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Entry/ConfigureCompletion.h"

#include "Entry/Change.h"
#include "Entry/Terminal.h"
#include "Foundation/Account.h"
#include "HookConfiguration/HookInstaller.h"
#include "HookConfiguration/QuillMossProfile.h"

namespace notch {
namespace {

int apply(const std::string& settings, const std::string& executable)
{
    HookInstaller().installCompletion(
        settings, executable, HookInstaller::CompletionVariant::normal);
    return reportDone({"Installed independent turn-end notification hooks; existing approvals "
                       "preserved.\n"});
}

int remove(const std::string& settings)
{
    HookInstaller().uninstallCompletion(settings);
    return reportDone(
        {"Removed turn-end notification hooks only; existing approvals preserved.\n"});
}

int configureTurnEnds(const Arguments& arguments)
{
    const bool installs = arguments.are({"--configure-completion", "--apply"});
    const bool removes = arguments.are({"--configure-completion", "--remove"});
    const auto executable = executablePath();
    if (!(installs || removes) || !executable)
        return complain({"Usage: --configure-completion --apply|--remove\n"});
    const auto settings = settingsURL(QuillMossProfile::quillmoss);
    return installs ? apply(settings, *executable) : remove(settings);
}

} // namespace

int configureCompletion(const Arguments& arguments)
{
    return runChange(
        "Completion configuration failed: ", [&] { return configureTurnEnds(arguments); });
}

} // namespace notch
