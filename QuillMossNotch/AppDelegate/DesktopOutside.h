// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"
#include "Bridge/ApprovalServer.h"
#include "HookConfiguration/ConfiguredProfiles.h"
#include "Platform/MainQueue/QtMainQueue.h"
#include "Platform/Pasteboard/ClipboardPasteboard.h"
#include "Platform/Preferences/SettingsPreferences.h"
#include "Platform/Workspace/DesktopWorkspace.h"

namespace notch {

// Everything outside the model, for real. Needs a QApplication.
struct DesktopOutside {
    SystemClock clock;
    QtMainQueue mainQueue;
    ApprovalServer server;
    AbsentNativeApprovals nativeMonitor;
    AbsentReminders reminders;
    SettingsPreferences preferences{SettingsPreferences::defaultFile()};
    ClipboardPasteboard pasteboard;
    DesktopWorkspace workspace{mainQueue};

    AppModel::Outside seams()
    {
        return {
            .clock = clock,
            .mainQueue = mainQueue,
            .server = server,
            .nativeMonitor = nativeMonitor,
            .reminders = reminders,
            .preferences = preferences,
            .pasteboard = pasteboard,
            .workspace = workspace,
            .configuredProfiles = configuredProfiles,
        };
    }
};

} // namespace notch
