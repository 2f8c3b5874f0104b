// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/NativeApprovalMonitor.h"
#include "Platform/Accessibility/AtspiAccessibility.h"
#include "Platform/Accessibility/DesktopTrust.h"
#include "Platform/RunningApplications/RunningApplications.h"

#include <memory>
#include <string>
#include <vector>

namespace notch {

// The monitor on this desktop, with all that it stands on. On a desktop without X11 or without an
// accessibility bus it is one that sees nothing, and says so.
std::unique_ptr<NativeApprovals> makeHostMonitor(
    const Clock& clock, Seconds interval = NativeApprovalMonitor::usualInterval);

} // namespace notch
