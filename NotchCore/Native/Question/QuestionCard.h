// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/Question/NativeQuestionMatch.h"
#include "Native/Tree/NativeApprovalNode.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace notch {

// Bounds of what is walked, far above what a scan may read.
inline constexpr std::size_t maxQuestionNodes = 20000;
inline constexpr std::size_t maxQuestionDepth = 128;

// The question cards whose parts are children of the group. Takes time linear in the children for
// each of them that is a skip button.
std::vector<NativeQuestionMatch> scanGroup(
    const NativeApprovalNode& group, std::string_view windowID, const ScreenRect& windowFrame);

} // namespace notch
