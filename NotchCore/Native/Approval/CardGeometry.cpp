// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Approval/CardGeometry.h"

#include <algorithm>
#include <cmath>

namespace notch {
namespace {

// Pixel rounding of the host.
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
        unit >= 12 && unit <= 128, // 1
        // The buttons form a stack, close enough to belong together.
        isNear(allow.minX(), deny.minX()), // 2
        isNear(allow.width, deny.width), // 3
        isNear(allow.height, deny.height), // 4
        allow.maxY() - 1 <= deny.minY(), // 5
        deny.minY() - allow.maxY() <= std::min(unit, 24.0), // 6
        // The command starts where the title and the buttons start.
        std::abs(title.minX() - command.minX()) <= unit, // 7
        allow.minX() - tolerance <= command.minX(), // 8
        command.minX() <= allow.minX() + unit, // 9
        // Title and risk share a line.
        title.minX() - tolerance <= risk.minX(), // 10
        risk.minX() < allow.maxX(), // 11
        title.minY() - tolerance <= risk.minY(), // 12
        risk.minY() < title.maxY(), // 13
        title.minY() < risk.maxY(), // 14
        // Line, command and buttons follow each other, with little between them.
        headingEnd <= command.minY() + tolerance, // 15
        command.minY() - headingEnd <= 2 * unit, // 16
        command.maxY() <= allow.minY() + tolerance, // 17
        allow.minY() - command.maxY() <= 2 * unit, // 18
        headingEnd - title.minY() <= 4 * unit, // 19
        command.height <= 4 * unit, // 20
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
