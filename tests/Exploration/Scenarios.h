// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Time.h"

#include <string>
#include <vector>

namespace notch {

// What may happen in any order, and how finely time is told apart.
struct Scenario {
    std::string name;
    Seconds grain;
    std::vector<std::string> events;
    bool isLarge = false; // Too many states for every day.
    // The text of a state leaves out what the guard remembers of a reminder that has gone: states
    // are then seldom taken for one another that are not, and not every way on is looked at.
    bool isApproximate = false;
};

const std::vector<Scenario>& scenarios();

} // namespace notch
