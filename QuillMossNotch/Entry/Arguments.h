// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <initializer_list>
#include <optional>
#include <span>
#include <string_view>

namespace notch {

// The process's argument list, the program's own path included.
class Arguments {
public:
    Arguments(int count, char** values)
        : count_(count)
        , values_(values)
    {
    }

    // The list as main() got it.
    int count() const { return count_; }
    char** values() const { return values_; }

    // True when any element equals the flag.
    bool contains(std::string_view flag) const { return position(flag) < count_; }
    // The element after the first one that equals the flag.
    std::optional<std::string_view> after(std::string_view flag) const;
    // The elements after the program's path.
    std::span<const char* const> list() const;
    // True when they are exactly these.
    bool are(std::initializer_list<std::string_view> words) const;

private:
    int position(std::string_view flag) const;

    int count_;
    char** values_;
};

} // namespace notch
