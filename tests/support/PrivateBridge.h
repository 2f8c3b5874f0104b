// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

namespace notch {

// Puts an empty bridge directory, which this process and its children alone see, over the user's
// own (a mount namespace), so that nothing here meets the person's resident application. Call it
// once, before any thread is started. Empty on success; otherwise why it is not to be had here, and
// a test of the whole program skips with it.
std::string enterPrivateBridge();

} // namespace notch
