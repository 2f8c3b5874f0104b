// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/Tree/ScreenRect.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace notch {

// A window as one of the two sides sees it: the window manager, or the program's own tree.
struct SeenWindow {
    std::string title;
    std::optional<ScreenRect> frame;
};

// For each managed window, the index of its frame in the program's tree: by title, then by place,
// then the only one left. Nothing unless each window has exactly one; frames may be left over, such
// as those of menus.
std::optional<std::vector<std::size_t>> matchFrames(
    const std::vector<SeenWindow>& windows, const std::vector<SeenWindow>& frames);

} // namespace notch
