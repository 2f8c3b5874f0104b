// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Time.h"
#include "Native/Accessibility.h"
#include "Native/ChangeSource.h"
#include "Native/Monitor/NativeMonitor.h"
#include "Native/Monitor/TickingQueue.h"
#include "Native/NativeApprovals.h"

#include <string>
#include <vector>

namespace notch {

// Looks at the host's windows at regular times on a thread of its own, offers a delete card that
// it knows, reports questions, and presses one button when it is told to. start(), stop() and
// decide() return when the thread has done them, which is within one scan; callbacks run on the
// thread and may call any of them. The thread keeps the usual priority: with a lower one the scans
// only take longer while the cores are busy, and a click waits for them.
class NativeApprovalMonitor final : public NativeApprovals {
public:
    static constexpr Seconds usualInterval{0.8};
    struct Rhythm {
        Seconds interval = usualInterval;
        // Tell when there may be something to look at again. Without any the looks never pause.
        std::vector<ChangeSource*> changes;
    };

    // Borrowed: `trust` by the caller's thread, everything else by the monitor's own.
    NativeApprovalMonitor(
        AccessibilityTrust& trust, MonitorDependencies dependencies, Rhythm rhythm);
    ~NativeApprovalMonitor() override;

    bool isTrusted() const override { return trust_.isProcessTrusted(); }
    void requestAccess() override { trust_.requestTrust(); }
    void start(Callbacks callbacks, Watched watched) override;
    void stop() override;
    bool decide(const std::string& id, Decision decision) override;

private:
    AccessibilityTrust& trust_;
    NativeMonitor monitor_; // The queue's thread only.
    TickingQueue queue_;
};

} // namespace notch
