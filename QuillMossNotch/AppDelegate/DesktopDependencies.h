// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"
#include "Bridge/ApprovalServer.h"
#include "Foundation/Account.h"
#include "HookConfiguration/CompletionHookCheck.h"
#include "HookConfiguration/ConfiguredProfiles.h"
#include "HookConfiguration/QuillMossProfile.h"
#include "Platform/Accessibility/HostMonitor.h"
#include "Platform/FileManager/DesktopFileManager.h"
#include "Platform/MainQueue/QtMainQueue.h"
#include "Platform/Pasteboard/ClipboardPasteboard.h"
#include "Platform/Preferences/SettingsPreferences.h"
#include "Platform/RunningApplications/HostIdentity.h"
#include "Platform/RunningApplications/RunningApplications.h"
#include "Platform/Workspace/ApplicationWatch.h"
#include "Platform/Workspace/DesktopWorkspace.h"
#include "SettingsView/HookFlow.h"
#include "TurnEnd/CompletionServer.h"

#include <memory>

namespace notch {

// Everything outside the model and its windows, for real. Needs a QApplication.
struct DesktopDependencies {
    SystemClock clock;
    QtMainQueue mainQueue;
    ApprovalServer server;
    std::unique_ptr<NativeApprovals> nativeMonitor = makeHostMonitor(clock);
    CompletionServer completionServer;
    RunningApplications hosts{hostWindowClasses()};
    ApplicationWatch applicationEvents{hosts};
    SettingsPreferences preferences{SettingsPreferences::defaultFile()};
    ClipboardPasteboard pasteboard;
    DesktopWorkspace workspace{mainQueue};
    DesktopFileManager fileManager;

    AppModel::Dependencies seams()
    {
        return {
            .clock = clock,
            .mainQueue = mainQueue,
            .server = server,
            .nativeMonitor = *nativeMonitor,
            .completionServer = completionServer,
            .applicationEvents = applicationEvents,
            .preferences = preferences,
            .pasteboard = pasteboard,
            .workspace = workspace,
            .configuredProfiles = configuredProfiles,
            .completionHookInstalled = completionHookInstalled,
            .reminders = ReminderCallbacks::of(
                hosts, [this](std::int32_t pid) { return hosts.activate(pid); }, preferences),
        };
    }
    HookFlow::Surroundings hookFiles()
    {
        return {
            .mainQueue = mainQueue,
            .fileManager = fileManager,
            .executableURL = executablePath,
            .settingsURL = settingsURL,
        };
    }
};

} // namespace notch
