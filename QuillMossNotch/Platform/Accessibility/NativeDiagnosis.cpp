// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Accessibility/NativeDiagnosis.h"

#include "Platform/Accessibility/HostMonitor.h"

#include <chrono>
#include <string>
#include <thread>

namespace notch {

void diagnoseNative(std::ostream& out)
{
    using namespace std::chrono_literals;
    const SystemClock clock;
    const auto monitor = makeHostMonitor(clock);
    out << "Accessibility trusted: " << (monitor->isTrusted() ? "true" : "false") << std::endl;
    monitor->start(
        {
            .onRequest =
                [&out](const ApprovalRequest&) {
                    out << "Recognized one actionable native approval card (contents omitted)."
                        << std::endl;
                },
            .onRemoval = {},
            .onStatus = [&out](const std::string& text) { out << text << std::endl; },
            .onQuestion = {},
        },
        {.approvals = true});
    // The time of two looks; what they find is told from the monitor's own thread meanwhile.
    std::this_thread::sleep_for(1.8s);
    monitor->stop();
}

} // namespace notch
