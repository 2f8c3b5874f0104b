// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>

namespace notch {

// The current user's home directory from the account database. The environment is never asked: a
// variable must not decide which settings file a program with the person's rights rewrites.
// Nothing when the account is unknown or its home is not an absolute path.
std::optional<std::string> homeDirectory();

// The absolute path of the running program. Nothing when the file has been deleted or replaced
// since the start: a path that no longer leads to this program must not be installed anywhere.
std::optional<std::string> executablePath();

} // namespace notch
