// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppModel/PressHistory.h"

#include <algorithm>

namespace notch {

void PressHistory::note(InputTime press)
{
    if (!presses_.empty() && presses_.back() == press)
        return;
    presses_.push_back(press);
    if (presses_.size() > limit)
        presses_.pop_front();
}

bool PressHistory::followsAnother(InputTime press, Seconds interval) const
{
    return std::ranges::any_of(presses_, [&](InputTime other) {
        const auto before = press - other;
        return before > Seconds{0} && before < interval;
    }) || (presses_.size() == limit && press - presses_.front() <= Seconds{0});
}

} // namespace notch
