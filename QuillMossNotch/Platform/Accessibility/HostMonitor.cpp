// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Accessibility/HostMonitor.h"

#include "Platform/Accessibility/Sha256.h"
#include "Platform/RunningApplications/HostIdentity.h"

#include <utility>

namespace notch {
namespace {

// The main thread's, which asks at launch and when the status changes. Starting the launcher of the
// accessibility bus takes it some time.
constexpr Seconds launcherPatience{0.25};

class HostMonitor final : public NativeApprovals {
public:
    HostMonitor(const Clock& clock, Seconds interval)
        : monitor_(trust_, {accessibility_, applications_, clock, sha256},
            {.interval = interval, .changes = {&applications_, &accessibility_}})
    {
    }

    bool isTrusted() const override { return monitor_.isTrusted(); }
    void requestAccess() override { monitor_.requestAccess(); }
    void start(Callbacks callbacks, Watched watched) override
    {
        monitor_.start(std::move(callbacks), watched);
    }
    void stop() override { monitor_.stop(); }
    bool decide(const std::string& id, Decision decision) override
    {
        return monitor_.decide(id, decision);
    }
    bool isConnected() const { return applications_.isConnected(); }

private:
    DesktopTrust trust_{launcherPatience};
    RunningApplications applications_{hostWindowClasses()};
    AtspiAccessibility accessibility_{applications_};
    NativeApprovalMonitor monitor_;
};

} // namespace

std::unique_ptr<NativeApprovals> makeHostMonitor(const Clock& clock, Seconds interval)
{
    auto monitor = std::make_unique<HostMonitor>(clock, interval);
    if (!monitor->isConnected() || !DesktopTrust::isAvailable())
        return std::make_unique<AbsentNativeApprovals>();
    return monitor;
}

} // namespace notch
