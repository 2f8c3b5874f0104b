// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <ostream>

namespace notch {

// Watches the host for 1.8 seconds as the resident application does, and writes what the monitor
// says; never a text of the host.
void diagnoseNative(std::ostream& out);

} // namespace notch
