// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/Tree/ScreenRect.h"

#include <array>
#include <span>

namespace notch {

// Title, previous, current, separator, total, next, skip.
using QuestionHeaderFrames = std::array<ScreenRect, 7>;

// Header and rows are placed on screen as the host lays out its card: the title left of one line of
// paging controls, the rows in one column below. All frames must be usable.
bool hasQuestionGeometry(const QuestionHeaderFrames& header, std::span<const ScreenRect> rows,
    const ScreenRect& groupFrame);

} // namespace notch
