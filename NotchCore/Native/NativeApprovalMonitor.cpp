// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/NativeApprovalMonitor.h"

#include <utility>

namespace notch {
NativeApprovalMonitor::NativeApprovalMonitor(
    AccessibilityTrust& trust, MonitorDependencies dependencies, Rhythm rhythm)
    : trust_(trust)
    , monitor_(std::move(dependencies), [this](bool on) { queue_.setTicking(on); })
    , queue_("quillmoss-notch.native-approval",
          {rhythm.interval, [this] { return monitor_.tick(), monitor_.mayRest(); },
              std::move(rhythm.changes)})
{
}

NativeApprovalMonitor::~NativeApprovalMonitor()
{
    queue_.sync([this] { queue_.setTicking(false); });
}

void NativeApprovalMonitor::start(Callbacks callbacks, Watched watched)
{
    queue_.sync([&] { monitor_.start(std::move(callbacks), watched); });
}

void NativeApprovalMonitor::stop()
{
    queue_.sync([this] { monitor_.stop(); });
}

bool NativeApprovalMonitor::decide(const std::string& id, Decision decision)
{
    bool pressed = false;
    queue_.sync([&] { pressed = monitor_.decide(id, decision); });
    return pressed;
}

} // namespace notch
