// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/Tree/NativeApprovalNode.h"

#include <array>

namespace notch {

// Title, risk, command, allow button, deny button of a flattened card.
using CardRow = std::array<const NativeApprovalNode*, 5>;

// The five are placed on screen as the host lays out its card: two equal buttons, deny below allow;
// title and risk on one line; the command between that line and the buttons.
bool hasCardGeometry(const CardRow& nodes);

} // namespace notch
