// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/Approval/ApprovalButtons.h"
#include "Native/Approval/NativeApprovalMatch.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace notch {

// The card around the two buttons in each of the host's two layouts; nothing if any rule fails.

// The deepest group around both buttons that holds a card and nothing else.
std::optional<NativeApprovalMatch> groupedCard(const ApprovalButtons& buttons);
// Five neighbours in a group that may hold anything else: title, risk, command, allow, deny.
std::optional<NativeApprovalMatch> flattenedCard(const ApprovalButtons& buttons);

// What both layouts share.

using CardNodes = std::vector<const NativeApprovalNode*>;

inline constexpr std::size_t maxCardNodes = 90;

bool hasTwoButtons(const CardNodes& nodes); // Exactly two.
bool areVisible(const CardNodes& nodes);

NativeApprovalMatch makeMatch(NativeApprovalLayout layout, const ApprovalButtons& buttons,
    const NativeApprovalNode& container, const CardNodes& contextNodes,
    const NativeApprovalContext& context);
// With the risk and the labels that every card has.
NativeApprovalContext makeContext(std::string_view title, std::string_view command);

} // namespace notch
