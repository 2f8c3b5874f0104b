// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <initializer_list>
#include <string_view>

namespace notch {

// Runs `change`, a look at the settings or a change of them that returns the exit status. Whatever
// stops it ends in status 1 and one line on standard error, which starts with `failed`.
int runChange(std::string_view failed, const std::function<int()>& change);

// Writes what was done to standard output, or, where that fails, to standard error, so that every
// change is reported.
int reportDone(std::initializer_list<std::string_view> pieces);

} // namespace notch
