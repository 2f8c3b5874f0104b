// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Question/QuestionGeometry.h"

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

using Frames = std::span<const ScreenRect>;

// Each control ends where the next begins, give or take a control's height.
bool followEachOther(Frames controls, double unit)
{
    const auto parted = [&](const ScreenRect& left, const ScreenRect& right) {
        return left.maxX() - 1 > right.minX() || right.minX() - left.maxX() > unit;
    };
    return std::ranges::adjacent_find(controls, parted) == controls.end();
}

// Equal rows, one under the other.
bool formColumn(Frames rows, double unit)
{
    const auto& first = rows.front();
    const auto isLikeFirst = [&](const ScreenRect& row) {
        return isNear(row.minX(), first.minX()) && isNear(row.width, first.width)
            && isNear(row.height, first.height);
    };
    const auto parted = [&](const ScreenRect& upper, const ScreenRect& lower) {
        return upper.maxY() > lower.minY() || lower.minY() - upper.maxY() > unit;
    };
    return std::ranges::all_of(rows, isLikeFirst)
        && std::ranges::adjacent_find(rows, parted) == rows.end();
}

bool rulesHold(const QuestionHeaderFrames& header, Frames rows)
{
    const auto& [title, previous, current, separator, total, next, skip] = header;
    const auto& row = rows.front();
    const double unit = previous.height;
    const double headerEnd = std::max(title.maxY(), skip.maxY());
    const auto isOnLine = [line = previous.midY()](
                              const ScreenRect& frame) { return isNear(frame.midY(), line); };
    const auto isControl = [&](const ScreenRect& frame) {
        return isNear(frame.width, unit) && isNear(frame.height, unit) && isOnLine(frame);
    };
    const auto isNumber = [&](const ScreenRect& frame) {
        return frame.height >= unit / 3 && frame.height <= unit && frame.width <= 2 * unit
            && isOnLine(frame);
    };
    const std::array rules{
        unit >= 12 && unit <= 64,
        isControl(previous) && isControl(next) && isControl(skip),
        isNumber(current) && isNumber(separator) && isNumber(total),
        std::abs(title.minY() - previous.minY()) <= unit / 2,
        title.height <= 16 * unit,
        title.maxX() <= previous.minX() + 1,
        previous.minX() - title.maxX() <= 2 * unit,
        row.height >= unit && row.height <= 3 * unit,
        row.width >= 6 * unit,
        row.minX() <= title.minX() && title.minX() - row.minX() <= row.height,
        title.maxX() <= row.maxX() && row.minX() <= previous.minX() && skip.maxX() <= row.maxX(),
        headerEnd <= row.minY() && row.minY() - headerEnd <= 2 * unit,
        followEachOther(Frames(header).subspan(1), unit),
        formColumn(rows, unit),
    };
    return std::ranges::all_of(rules, [](bool holds) { return holds; });
}

} // namespace

bool hasQuestionGeometry(const QuestionHeaderFrames& header, std::span<const ScreenRect> rows,
    const ScreenRect& groupFrame)
{
    const auto isInside = [&](const ScreenRect& frame) { return groupFrame.contains(frame); };
    return std::ranges::all_of(header, isInside) && std::ranges::all_of(rows, isInside)
        && rulesHold(header, rows);
}

} // namespace notch
