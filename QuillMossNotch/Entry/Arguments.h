// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace notch {

// The process's argument list, the program's own path included.
class Arguments {
public:
    Arguments(int count, char** values)
        : count_(count)
        , values_(values)
    {
    }

    // As main() got it.
    int count() const { return count_; }
    char** values() const { return values_; }

    // True when any element equals the flag.
    bool contains(std::string_view flag) const { return position(flag) < count_; }
    // The element behind the first one that equals the flag.
    std::optional<std::string_view> behind(std::string_view flag) const;
    // The elements behind the program's path.
    std::vector<std::string_view> list() const;

private:
    int position(std::string_view flag) const;

    int count_;
    char** values_;
};

} // namespace notch
