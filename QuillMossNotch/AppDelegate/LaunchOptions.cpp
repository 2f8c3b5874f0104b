// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppDelegate/LaunchOptions.h"

#include <algorithm>

namespace notch {

LaunchOptions LaunchOptions::parse(std::span<const std::string> arguments)
{
    const auto has = [&](std::string_view flag) {
        return std::find(arguments.begin(), arguments.end(), flag) != arguments.end();
    };
    return {
        .enableNativeApprovals = has("--enable-native-approvals"),
        .enableCompletionReminders = has("--enable-completion-reminders"),
        .demo = has("--demo"),
    };
}

void LaunchOptions::storeIn(Preferences& preferences) const
{
    if (enableNativeApprovals)
        preferences.set(Preference::nativeApprovalsEnabled, true);
    if (enableCompletionReminders)
        preferences.set(Preference::completionRemindersEnabled, true);
}

} // namespace notch
