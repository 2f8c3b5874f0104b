// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/Tree/NativeApprovalNode.h"

#include <optional>
#include <span>
#include <vector>

namespace notch {

// The numbered answers at the head of the nodes, 1 to 20 of them, all enabled; nothing if there is
// none, if one that looks like an answer is not exactly one, or if more numbers follow them.
std::optional<std::span<const NativeApprovalNode>> readQuestionRows(
    std::span<const NativeApprovalNode> nodes);

} // namespace notch
