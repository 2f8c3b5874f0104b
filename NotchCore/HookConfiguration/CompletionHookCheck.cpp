// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "HookConfiguration/CompletionHookCheck.h"

#include "Foundation/Account.h"
#include "HookConfiguration/HookInstaller.h"
#include "HookConfiguration/QuillMossProfile.h"

namespace notch {

Result<bool, std::string> completionHookInstalled()
{
    const auto executable = executablePath();
    if (!executable)
        return false;
    try {
        return HookInstaller().completionInstalled(settingsURL(QuillMossProfile::quillmoss),
            *executable, HookInstaller::CompletionVariant::normal);
    } catch (const HookInstaller::Failure& failure) {
        return Failure{failure.message};
    }
}

} // namespace notch
