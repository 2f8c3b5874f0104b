// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Bridge/ApprovalRequest.h"

#include <cstdint>

namespace notch {

enum class Demo : std::uint8_t { hook, native };

// A made-up request to try the notch with. It comes from no hook and no card.
ApprovalRequest demoRequest(Demo demo, Date now);

} // namespace notch
