// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Question/QuestionCard.h"

#include "Native/Question/QuestionHeader.h"
#include "Native/Question/QuestionRows.h"
#include "Native/Question/QuestionTexts.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <set>
#include <span>
#include <string>

namespace notch {
namespace {

constexpr std::size_t minChildren = 8;
constexpr std::size_t headerSize = 7;

using Nodes = std::span<const NativeApprovalNode>;

bool isAnchor(const NativeApprovalNode& node)
{
    return node.is(role::button) && singleText(node) == skipLabel;
}

bool hasCardGeometry(const QuestionHeader& header, Nodes rows, const ScreenRect& groupFrame)
{
    std::vector<ScreenRect> frames;
    std::ranges::transform(
        rows, std::back_inserter(frames), [](const auto& row) { return *row.frame; });
    return hasQuestionGeometry(header.frames, frames, groupFrame);
}

// Nothing if two nodes share an id.
std::optional<std::vector<std::string>> contextIDs(Nodes header)
{
    std::vector<std::string> ids;
    for (const auto& node : header) {
        ids.push_back(node.id);
        std::ranges::transform(node.children, std::back_inserter(ids), &NativeApprovalNode::id);
    }
    if (std::set(ids.begin(), ids.end()).size() != ids.size())
        return std::nullopt;
    return ids;
}

// The card whose header of seven ends with this skip button.
std::optional<NativeQuestionMatch> readCard(
    const NativeApprovalNode& group, std::size_t headerStart, std::string_view windowID)
{
    const auto nodes = Nodes(group.children).subspan(headerStart);
    const auto headerNodes = nodes.first<headerSize>();
    const auto header = readQuestionHeader(headerNodes);
    if (!header)
        return std::nullopt;
    const auto rows = readQuestionRows(nodes.subspan(headerSize));
    if (!rows)
        return std::nullopt;
    if (!hasCardGeometry(*header, *rows, *group.frame))
        return std::nullopt;
    auto ids = contextIDs(headerNodes);
    if (!ids)
        return std::nullopt;
    return NativeQuestionMatch{.windowID = std::string(windowID),
        .containerID = group.id,
        .anchorID = headerNodes.back().id,
        .contextNodeIDs = *std::move(ids),
        .title = std::string(header->title),
        .currentPage = header->currentPage,
        .totalPages = header->totalPages};
}

} // namespace

std::vector<NativeQuestionMatch> scanGroup(
    const NativeApprovalNode& group, std::string_view windowID, const ScreenRect& windowFrame)
{
    std::vector<NativeQuestionMatch> matches;
    if (!group.hasUsableFrame() || !windowFrame.contains(*group.frame)
        || group.children.size() < minChildren)
        return matches;
    // Six siblings before the anchor, and one after it.
    for (std::size_t start = 0; start + headerSize < group.children.size(); ++start) {
        if (!isAnchor(group.children[start + headerSize - 1]))
            continue;
        if (auto match = readCard(group, start, windowID))
            matches.push_back(*std::move(match));
    }
    return matches;
}

} // namespace notch
