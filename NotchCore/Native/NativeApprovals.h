// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Bridge/ApprovalRequest.h"
#include "Bridge/Decision.h"
#include "Foundation/Time.h"
#include "Interaction/QuestionReminderState.h"

#include <functional>
#include <string>

namespace notch {

// The cards in the host's own window, as the model sees them. Main thread, except the callbacks.
class NativeApprovals {
public:
    using OnQuestion = std::function<void(QuestionReminderState::Observation, Uptime capturedAt)>;
    // Run on a thread of the observer, one at a time, in order.
    struct Callbacks {
        std::function<void(ApprovalRequest)> onRequest;
        std::function<void(std::string id)> onRemoval;
        std::function<void(std::string text)> onStatus;
        // Each look at the host's windows, with the moment in which it began. Null: questions are
        // not read at all.
        OnQuestion onQuestion;
    };
    // Delete cards are offered as requests only while this is on.
    struct Watched {
        bool approvals = false;
    };

    virtual ~NativeApprovals() = default;
    // This process may read other programs' windows.
    virtual bool isTrusted() const = 0;
    virtual void requestAccess() = 0;
    virtual void start(Callbacks callbacks, Watched watched) = 0;
    virtual void stop() = 0;
    // True when the native button was pressed.
    virtual bool decide(const std::string& id, Decision decision) = 0;
};

// For a desktop whose windows cannot be read: nothing is ever seen and nothing can be pressed, and
// it says so.
class AbsentNativeApprovals final : public NativeApprovals {
public:
    bool isTrusted() const override { return false; }
    void requestAccess() override { }
    void start(Callbacks callbacks, Watched) override
    {
        if (callbacks.onStatus)
            callbacks.onStatus("此桌面没有辅助功能接口，请在 QuillMoss 中确认");
    }
    void stop() override { }
    bool decide(const std::string&, Decision) override { return false; }
};

} // namespace notch
