// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Entry/ConfigureCompletion.h"

#include "Entry/Terminal.h"
#include "Foundation/Account.h"
#include "HookConfiguration/HookInstaller.h"
#include "HookConfiguration/QuillMossProfile.h"

namespace notch {
namespace {

constexpr int success = 0;

bool isComplete(const std::vector<std::string_view>& list)
{
    return list.size() == 2 && list[0] == "--configure-completion"
        && (list[1] == "--apply" || list[1] == "--remove");
}

void apply(const std::string& settings, const std::string& executable)
{
    HookInstaller().installCompletion(
        settings, executable, HookInstaller::CompletionVariant::normal);
    print("Installed independent turn-end notification hooks; existing approvals preserved.\n");
}

void remove(const std::string& settings)
{
    HookInstaller().uninstallCompletion(settings);
    print("Removed turn-end notification hooks only; existing approvals preserved.\n");
}

} // namespace

int configureCompletion(const Arguments& arguments)
{
    const auto list = arguments.list();
    const auto executable = executablePath();
    if (!isComplete(list) || !executable)
        return complain("Usage: --configure-completion --apply|--remove\n");
    try {
        const auto settings = settingsURL(QuillMossProfile::quillmoss);
        if (list[1] == "--apply")
            apply(settings, *executable);
        else
            remove(settings);
        return success;
    } catch (const HookInstaller::Failure& failure) {
        return complain("Completion configuration failed: " + failure.message + '\n');
    }
}

} // namespace notch
