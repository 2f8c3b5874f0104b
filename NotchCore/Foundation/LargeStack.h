// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>

namespace notch {

// Runs `work` on a stack of several mebibytes, whatever the calling thread's own is limited to, and
// waits for its end. Throws std::bad_alloc when there is no memory for the stack or the work throws
// it; the work may throw nothing else.
void runOnLargeStack(const std::function<void()>& work);

} // namespace notch
