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

// What was done, on standard output. Where that cannot be written it is said on standard error, so
// that a change never goes unsaid.
int reportDone(std::initializer_list<std::string_view> pieces);

} // namespace notch
