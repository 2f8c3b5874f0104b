// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"
#include "support/FakeApprovalBridge.h"
#include "support/FakeNativeApprovals.h"
#include "support/FakePasteboard.h"
#include "support/FakePreferences.h"
#include "support/FakeReminders.h"
#include "support/FakeWorkspace.h"
#include "support/VirtualTime.h"

#include <string>
#include <utility>
#include <vector>

namespace notch {

// Everything outside an AppModel, made up.
//
//   FakeOutside outside;
//   AppModel model(outside.seams());
//   model.start();
//   outside.request("A"); // A hook asks.
//   outside.time.advance(Seconds{1});
struct FakeOutside {
    std::vector<std::string> calls; // What the model told its surroundings, in order.
    VirtualTime time;
    FakeApprovalBridge server{calls};
    FakeNativeApprovals monitor{calls};
    FakeReminders reminders{calls};
    FakePreferences preferences;
    FakePasteboard pasteboard;
    FakeWorkspace workspace{calls};
    std::optional<std::vector<std::string>> profiles{{"QuillMoss"}};

    AppModel::Outside seams()
    {
        return {
            .clock = time,
            .mainQueue = time,
            .server = server,
            .nativeMonitor = monitor,
            .reminders = reminders,
            .preferences = preferences,
            .pasteboard = pasteboard,
            .workspace = workspace,
            .configuredProfiles = [this] { return profiles; },
        };
    }

    // The calls so far that begin with `prefix`; then they are forgotten.
    std::vector<std::string> takeCalls(const std::string& prefix = {})
    {
        std::erase_if(calls, [&](const auto& call) { return !call.starts_with(prefix); });
        return std::exchange(calls, {});
    }

    ApprovalRequest hookRequest(const std::string& id) const
    {
        return {
            .id = id,
            .sessionID = "session",
            .toolName = "Bash",
            .toolInputJSON = R"({"command":"ls"})",
            .cwd = "/home/a/notch",
            .eventName = "PermissionRequest",
            .expiresAt = time.now() + Seconds{50},
            .source = "quillmoss",
        };
    }
    ApprovalRequest nativeRequest(const std::string& id) const
    {
        auto request = hookRequest(id);
        request.eventName = nativeApprovalEventName;
        return request;
    }

    // A hook asks; a card appears; either goes away.
    void request(const std::string& id)
    {
        server.callbacks.onRequest(hookRequest(id));
        time.runPosted();
    }
    void card(const std::string& id)
    {
        monitor.callbacks.onRequest(nativeRequest(id));
        time.runPosted();
    }
    void remove(const std::string& id)
    {
        server.callbacks.onRemoval(id);
        time.runPosted();
    }
};

} // namespace notch
