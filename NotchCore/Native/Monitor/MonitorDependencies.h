// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Time.h"
#include "Native/Accessibility.h"
#include "Native/HostApplications.h"
#include "Native/Monitor/Candidate.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

namespace notch {

// Everything outside the monitor. Borrowed.
struct MonitorDependencies {
    Accessibility& accessibility;
    const HostApplications& applications;
    const Clock& clock;
    Sha256 sha256;

    // The host's living processes at this moment.
    std::vector<HostApplication> livingHosts() const
    {
        auto hosts = applications.running();
        std::erase_if(hosts, [](const auto& host) { return host.isTerminated; });
        return hosts;
    }
    // This process as it is at this moment; nothing if it does not live.
    std::optional<HostApplication> livingHost(std::int32_t pid) const
    {
        const auto hosts = livingHosts();
        const auto found = std::ranges::find(hosts, pid, &HostApplication::pid);
        return found == hosts.end() ? std::nullopt : std::optional(*found);
    }
    // This process is the only host, and neither in front nor hidden.
    bool backgroundTarget(std::int32_t pid) const
    {
        const auto hosts = livingHosts();
        return hosts.size() == 1 && hosts.front().pid == pid && !hosts.front().isActive
            && !hosts.front().isHidden;
    }
};

} // namespace notch
