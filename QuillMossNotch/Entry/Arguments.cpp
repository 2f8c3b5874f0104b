// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Entry/Arguments.h"

namespace notch {

std::optional<std::string_view> Arguments::after(std::string_view flag) const
{
    const int next = position(flag) + 1;
    return next < count_ ? std::optional<std::string_view>(values_[next]) : std::nullopt;
}

int Arguments::position(std::string_view flag) const
{
    int at = 0;
    while (at < count_ && values_[at] != flag)
        ++at;
    return at;
}

} // namespace notch
