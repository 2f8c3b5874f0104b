// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Question/QuestionRows.h"

#include "Native/Question/QuestionCard.h"
#include "Native/Question/QuestionTexts.h"
#include "Native/Tree/PreOrderWalk.h"
#include "Unicode/Scalars.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

namespace notch {
namespace {

constexpr int maxRows = 20;
constexpr std::size_t maxRowBytes = 1100;
constexpr std::size_t maxLabelBytes = 1024;
constexpr double lineTolerance = 2;

using Nodes = std::span<const NativeApprovalNode>;

bool isRowNumber(std::string_view text)
{
    return parsePage(text, maxRows).has_value();
}

// Number, label and image are side by side on the row's middle line, near its ends.
bool isLaidOutAsRow(const ScreenRect& row, const ScreenRect& number, const ScreenRect& label,
    const ScreenRect& image)
{
    const auto isOnLine = [&](const ScreenRect& part) {
        return std::abs(part.midY() - row.midY()) <= lineTolerance;
    };
    if (number.maxX() > label.minX() || label.maxX() > image.minX()
        || label.minX() - number.maxX() > row.height || number.minX() - row.minX() > row.height
        || row.maxX() - image.maxX() > row.height)
        return false;
    return isOnLine(number) && isOnLine(label) && isOnLine(image);
}

bool isTextPart(const NativeApprovalNode& node)
{
    return node.isLiveLeaf(role::staticText) && node.hasUsableFrame() && singleText(node);
}

// The row's own text says no more than its number and its label do.
bool repeatsParts(std::string_view text, std::string_view number, std::string_view label)
{
    std::string parts(number);
    parts.append(" ").append(label);
    return words(text) == words(parts);
}

bool isOptionRow(const NativeApprovalNode& row, int number)
{
    if (!row.visible || !row.hasUsableFrame() || row.children.size() != 3)
        return false;
    const auto &numeral = row.children[0], &label = row.children[1], &image = row.children[2];
    if (!isTextPart(numeral) || parsePage(*singleText(numeral), maxRows) != number)
        return false;
    if (!isTextPart(label)
        || !isAcceptableText(*singleText(label), maxLabelBytes, LineBreaks::refused))
        return false;
    const auto text = singleText(row);
    if (!text || !isAcceptableText(*text, maxRowBytes, LineBreaks::allowed)
        || !repeatsParts(*text, *singleText(numeral), *singleText(label)))
        return false;
    if (!image.is(role::image) || !image.visible || !image.children.empty() || !image.isTextless()
        || !image.hasUsableFrame())
        return false;
    if (!std::ranges::all_of(
            row.children, [&](const auto& part) { return row.frame->contains(*part.frame); }))
        return false;
    return isLaidOutAsRow(*row.frame, *numeral.frame, *label.frame, *image.frame);
}

// Whether the node is an answer at all, so that the list does not simply end before it.
bool looksLikeRow(const NativeApprovalNode& node)
{
    const auto& parts = node.children;
    if (!node.is(role::button) || parts.empty() || !parts[0].is(role::staticText))
        return false;
    if (parts.size() == 3 && parts[1].is(role::staticText) && parts[2].is(role::image))
        return true;
    return std::ranges::any_of(parts[0].texts, isRowNumber);
}

// A number, or a number in front of other words.
bool showsPageMarker(const NativeApprovalNode& node)
{
    return std::ranges::any_of(node.texts, [&](std::string_view text) {
        if (node.is(role::staticText) && isRowNumber(text))
            return true;
        const auto parts = words(text);
        return parts.size() >= 2 && isRowNumber(parts[0]);
    });
}

// True also when the nodes are too many to be searched.
bool hasPageMarker(Nodes nodes)
{
    std::size_t walked = 0;
    for (PreOrderWalk walk(nodes); const auto* node = walk.next();) {
        if (++walked > maxQuestionNodes || walk.depth() > maxQuestionDepth
            || showsPageMarker(*node))
            return true;
    }
    return false;
}

} // namespace

std::optional<Nodes> readQuestionRows(Nodes nodes)
{
    const auto end = std::ranges::find_if_not(nodes, looksLikeRow);
    const auto rows = nodes.first(static_cast<std::size_t>(end - nodes.begin()));
    if (rows.size() > maxRows)
        return std::nullopt;
    for (int number = 1; const auto& row : rows) {
        if (!isOptionRow(row, number++))
            return std::nullopt;
    }
    if (rows.empty() || !std::ranges::all_of(rows, &NativeApprovalNode::enabled))
        return std::nullopt;
    // An answer that was not recognised must not go missing.
    if (hasPageMarker(nodes.subspan(rows.size())))
        return std::nullopt;
    return rows;
}

} // namespace notch
