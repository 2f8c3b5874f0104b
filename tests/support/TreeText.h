// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/Tree/NativeApprovalNode.h"

#include <string>
#include <string_view>
#include <vector>

namespace notch {

// Windows as indented text, two blanks a level, one node a line:
//
//   Window #w @0,0,800,600
//     Group #card -enabled
//       Button #allow @40,150,300,30 "允许本次删除" "帮助"
//
// The role without its "AX"; then, each only where it differs from what is usual: the id (else one
// made from the line's number; - for an empty one), -visible, -enabled, the frame as
// x,y,width,height (else none) and the texts, in which \n is a line break.
std::vector<NativeApprovalNode> parseTree(std::string_view text);

// Changes nodes by a list such as "deny.x+2 allow.h-3 card*0.5 risk-visible title=Heading". A node
// that moves in x or y takes its descendants along; one that grows in h keeps them on its middle
// line; * multiplies every number of the node and of its descendants. Then -visible, -enabled,
// -frame, and another role. A node that is not there, or has no frame to change, is passed over.
void editNodes(std::vector<NativeApprovalNode>& roots, const std::string& edits);

} // namespace notch
