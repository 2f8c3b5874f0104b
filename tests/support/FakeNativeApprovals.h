// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/NativeApprovals.h"

#include <string>
#include <utility>
#include <vector>

namespace notch {

// An observer of cards that a test makes up.
class FakeNativeApprovals final : public NativeApprovals {
public:
    explicit FakeNativeApprovals(std::vector<std::string>& calls)
        : calls_(calls)
    {
    }

    bool isTrusted() const override { return trusted; }
    void requestAccess() override { calls_.emplace_back("monitor.requestAccess"); }
    void start(Callbacks given, Watched watched) override
    {
        calls_.push_back(std::string("monitor.start") + (watched.approvals ? " approvals" : "")
                         + (watched.questions ? " questions" : ""));
        callbacks = std::move(given);
    }
    void stop() override { calls_.emplace_back("monitor.stop"); }
    bool decide(const std::string& id, Decision decision) override
    {
        calls_.push_back("monitor.decide " + id + ' ' + std::string(name(decision)));
        return cardVerifies;
    }

    Callbacks callbacks;
    bool trusted = false;
    bool cardVerifies = true; // The card is still the one that was read.

private:
    std::vector<std::string>& calls_;
};

} // namespace notch
