// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Time.h"

#include <optional>
#include <string>
#include <string_view>

namespace notch {

// Whole reads and writes of a process's standard streams, which may be non-blocking: the process
// that started this one decides that. The descriptors are borrowed.

// Everything to the end of file; nothing when that is more than `maximumBytes`, cannot be read, or
// has not come by the deadline, if there is one.
std::optional<std::string> readInput(
    int input, std::size_t maximumBytes, std::optional<Uptime> deadline = {});

// False when not all of it could be written. Takes no memory and has no limit on time.
bool writeOutput(int output, std::string_view text);

// From here on a reader that is gone, or a limit on the size of files, ends a write with an error
// and not the process with a signal.
void ignoreWriteSignals();

} // namespace notch
