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

// 3 to 16, with the skip button as the header's last child of seven.
std::optional<NativeQuestionMatch> readCard(
    const NativeApprovalNode& group, std::size_t headerStart, std::string_view windowID)
{
    // 3
    const auto nodes = Nodes(group.children).subspan(headerStart);
    const auto headerNodes = nodes.first<headerSize>();
    // 4 to 10
    const auto header = readQuestionHeader(headerNodes);
    if (!header)
        return std::nullopt;
    // 11 to 13
    const auto rows = readQuestionRows(nodes.subspan(headerSize));
    if (!rows)
        return std::nullopt;
    // 14
    if (!hasCardGeometry(*header, *rows, *group.frame))
        return std::nullopt;
    // 15
    auto ids = contextIDs(headerNodes);
    if (!ids)
        return std::nullopt;
    // 16
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
    // 1
    if (!group.hasUsableFrame() || !windowFrame.contains(*group.frame)
        || group.children.size() < minChildren)
        return matches;
    // 2: six siblings in front of the anchor, and one behind it.
    for (std::size_t start = 0; start + headerSize < group.children.size(); ++start) {
        if (!isAnchor(group.children[start + headerSize - 1]))
            continue;
        if (auto match = readCard(group, start, windowID))
            matches.push_back(*std::move(match));
    }
    return matches;
}

} // namespace notch
