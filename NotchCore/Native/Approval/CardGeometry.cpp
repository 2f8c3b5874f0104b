// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Approval/CardGeometry.h"

#include <algorithm>
#include <cmath>

namespace notch {
namespace {

// The host rounds to pixels.
constexpr double tolerance = 2;

bool isNear(double a, double b)
{
    return std::abs(a - b) <= tolerance;
}

bool rulesHold(const ScreenRect& title, const ScreenRect& risk, const ScreenRect& command,
    const ScreenRect& allow, const ScreenRect& deny)
{
    const double unit = allow.height;
    const double headingEnd = std::max(title.maxY(), risk.maxY());
    const std::array rules{
        unit >= 12 && unit <= 128,
        // The buttons form a stack, close enough to belong together.
        isNear(allow.minX(), deny.minX()),
        isNear(allow.width, deny.width),
        isNear(allow.height, deny.height),
        allow.maxY() - 1 <= deny.minY(),
        deny.minY() - allow.maxY() <= std::min(unit, 24.0),
        // The command starts where the title and the buttons start.
        std::abs(title.minX() - command.minX()) <= unit,
        allow.minX() - tolerance <= command.minX(),
        command.minX() <= allow.minX() + unit,
        // Title and risk share a line.
        title.minX() - tolerance <= risk.minX(),
        risk.minX() < allow.maxX(),
        title.minY() - tolerance <= risk.minY(),
        risk.minY() < title.maxY(),
        title.minY() < risk.maxY(),
        // Line, command and buttons follow each other, with little between them.
        headingEnd <= command.minY() + tolerance,
        command.minY() - headingEnd <= 2 * unit,
        command.maxY() <= allow.minY() + tolerance,
        allow.minY() - command.maxY() <= 2 * unit,
        headingEnd - title.minY() <= 4 * unit,
        command.height <= 4 * unit,
    };
    return std::ranges::all_of(rules, [](bool holds) { return holds; });
}

} // namespace

bool hasCardGeometry(const CardRow& nodes)
{
    if (!std::ranges::all_of(nodes, [](const auto* node) { return node->hasUsableFrame(); }))
        return false;
    return rulesHold(
        *nodes[0]->frame, *nodes[1]->frame, *nodes[2]->frame, *nodes[3]->frame, *nodes[4]->frame);
}

} // namespace notch
