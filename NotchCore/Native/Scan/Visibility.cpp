// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Scan/Visibility.h"

#include "Native/Tree/Role.h"

namespace notch::scan {
namespace {

constexpr double buttonTolerance = 2;

} // namespace

bool shownInWindow(std::string_view role, bool hidden, const std::optional<ScreenRect>& frame,
    const ScreenRect& windowFrame)
{
    const bool hasArea = frame && !frame->isEmpty();
    if (hidden)
        return false;
    if (role == role::button)
        return hasArea && windowFrame.grownBy(buttonTolerance).contains(*frame);
    if (role == role::staticText)
        return hasArea && frame->intersects(windowFrame);
    return !hasArea || frame->intersects(windowFrame);
}

bool childrenAreRead(std::string_view role, bool visible)
{
    return visible && role != role::staticText;
}

} // namespace notch::scan
