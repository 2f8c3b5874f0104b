// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/Reminders.h"

#include <string>
#include <vector>

namespace notch {

// Reminders that are there or not as a test says, and note what they are told.
class FakeReminders final : public Reminders {
public:
    explicit FakeReminders(std::vector<std::string>& calls)
        : calls_(calls)
    {
    }

    void startObservers() override { calls_.emplace_back("reminders.startObservers"); }
    void startTurnEnds() override { calls_.emplace_back("reminders.startTurnEnds"); }
    void stopTurnEnds() override { calls_.emplace_back("reminders.stopTurnEnds"); }
    void nativeMonitoringRestarted() override { calls_.emplace_back("reminders.restarted"); }
    bool questionVisible() const override { return question; }
    bool completionVisible() const override { return completion; }
    void disarm() override { calls_.emplace_back("reminders.disarm"); }
    void refresh(Date) override { calls_.emplace_back("reminders.refresh"); }
    void willCollapse() override { calls_.emplace_back("reminders.willCollapse"); }
    void pointerEntered() override { calls_.emplace_back("reminders.pointerEntered"); }
    void pointerLeft() override { calls_.emplace_back("reminders.pointerLeft"); }

    bool question = false;
    bool completion = false;

private:
    std::vector<std::string>& calls_;
};

} // namespace notch
