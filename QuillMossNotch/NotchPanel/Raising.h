// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/MainQueue.h"
#include "Foundation/Time.h"
#include "NotchPanel/NotchSurface.h"

#include <deque>
#include <optional>
#include <string>

namespace notch {

struct AppModelState;

// What the person is asked or reminded of now, as a name that differs for each; nothing when
// nothing waits for them.
std::optional<std::string> presentMatter(const AppModelState& state);

// Keeps the panel in sight while something waits for the person: raises it when that comes, and
// again when another window hides it. Another window that also insists on the top, a screen locker
// above all, has it after `most` times in `period`; then one raise follows for each that grows old.
// Main thread.
class Raising {
public:
    static constexpr std::size_t most = 3;
    static constexpr Seconds period{10};

    // All must outlive it.
    Raising(NotchSurface& panel, const Clock& clock, MainQueue& queue);

    // Nothing: nobody needs to see the panel. Cheap when nothing has changed.
    void setMatter(const std::optional<std::string>& matter);
    // The greater part of the surface has come under other windows.
    void hidden();

private:
    void raise();

    NotchSurface& panel_;
    const Clock& clock_;
    MainQueue& queue_;
    std::optional<std::string> matter_;
    std::deque<Uptime> raised_; // The times in the last period when it was hidden.
    DelayedWork later_;
};

} // namespace notch
