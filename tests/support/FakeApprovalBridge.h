// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Bridge/ApprovalBridge.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace notch {

// A bridge whose hooks are lines of a test.
class FakeApprovalBridge final : public ApprovalBridge {
public:
    explicit FakeApprovalBridge(std::vector<std::string>& calls)
        : calls_(calls)
    {
    }

    std::optional<TransportError> start(Callbacks given) override
    {
        calls_.emplace_back("server.start");
        callbacks = std::move(given);
        return startError;
    }
    bool decide(const std::string& id, Decision decision) override
    {
        calls_.push_back("server.decide " + id + ' ' + std::string(name(decision)));
        if (onDecide)
            onDecide();
        return hookWaits;
    }
    void stop() override { calls_.emplace_back("server.stop"); }

    Callbacks callbacks;
    std::optional<TransportError> startError;
    std::function<void()> onDecide; // While the decision is on its way.
    bool hookWaits = true; // The hook is still there to take a decision.

private:
    std::vector<std::string>& calls_;
};

} // namespace notch
