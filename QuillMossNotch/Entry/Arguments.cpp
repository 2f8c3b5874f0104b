// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Entry/Arguments.h"

namespace notch {

std::optional<std::string_view> Arguments::behind(std::string_view flag) const
{
    const int next = position(flag) + 1;
    return next < count_ ? std::optional<std::string_view>(values_[next]) : std::nullopt;
}

std::vector<std::string_view> Arguments::list() const
{
    // An empty argument list is possible: execve(2).
    return count_ == 0 ? std::vector<std::string_view>()
                       : std::vector<std::string_view>(values_ + 1, values_ + count_);
}

int Arguments::position(std::string_view flag) const
{
    int at = 0;
    while (at < count_ && values_[at] != flag)
        ++at;
    return at;
}

} // namespace notch
