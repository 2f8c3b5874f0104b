// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Entry/Arguments.h"

#include <algorithm>

namespace notch {

std::optional<std::string_view> Arguments::after(std::string_view flag) const
{
    const int next = position(flag) + 1;
    return next < count_ ? std::optional<std::string_view>(values_[next]) : std::nullopt;
}

std::span<const char* const> Arguments::list() const
{
    // An empty argument list is possible: execve(2).
    return {values_ + (count_ > 0 ? 1 : 0), values_ + count_};
}

bool Arguments::are(std::initializer_list<std::string_view> words) const
{
    const auto all = list();
    return std::equal(all.begin(), all.end(), words.begin(), words.end(),
        [](const char* argument, std::string_view word) { return argument == word; });
}

int Arguments::position(std::string_view flag) const
{
    int at = 0;
    while (at < count_ && values_[at] != flag)
        ++at;
    return at;
}

} // namespace notch
