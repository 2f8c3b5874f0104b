// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Question/QuestionHeader.h"

#include "Native/Question/QuestionTexts.h"

#include <algorithm>
#include <cstddef>

namespace notch {
namespace {

constexpr int maxPages = 100;
constexpr std::size_t maxTitleBytes = 4096;

bool isTextLeaf(const NativeApprovalNode& node)
{
    return node.isLiveLeaf(role::staticText) && node.hasUsableFrame();
}

bool isNavigationButton(const NativeApprovalNode& node, std::string_view label)
{
    if (!node.is(role::button) || singleText(node) != label)
        return false;
    if (!node.visible || !node.hasUsableFrame())
        return false;
    if (node.children.size() != 1)
        return false;
    const auto& image = node.children.front();
    return image.is(role::image) && image.visible && image.children.empty() && image.isTextless()
        && image.hasUsableFrame() && node.frame->contains(*image.frame);
}

std::optional<std::string_view> questionTitle(const NativeApprovalNode& node)
{
    if (!isTextLeaf(node))
        return std::nullopt;
    const auto text = singleText(node);
    return text && isAcceptableText(*text, maxTitleBytes, LineBreaks::allowed) ? text
                                                                               : std::nullopt;
}

std::optional<int> pageNumber(const NativeApprovalNode& node)
{
    if (!isTextLeaf(node))
        return std::nullopt;
    const auto text = singleText(node);
    return text ? parsePage(*text, maxPages) : std::nullopt;
}

} // namespace

std::optional<QuestionHeader> readQuestionHeader(std::span<const NativeApprovalNode, 7> nodes)
{
    const auto &previous = nodes[1], &separator = nodes[3], &next = nodes[5], &skip = nodes[6];
    const auto title = questionTitle(nodes[0]);
    if (!title)
        return std::nullopt;
    if (!isNavigationButton(previous, previousLabel))
        return std::nullopt;
    const auto current = pageNumber(nodes[2]);
    if (!current)
        return std::nullopt;
    if (!isTextLeaf(separator) || singleText(separator) != "/")
        return std::nullopt;
    const auto total = pageNumber(nodes[4]);
    if (!total || *total < *current)
        return std::nullopt;
    if (!isNavigationButton(next, nextLabel) || !isNavigationButton(skip, skipLabel)
        || !skip.enabled)
        return std::nullopt;
    if (previous.enabled != (*current >= 2) || next.enabled != (*current < *total))
        return std::nullopt;
    QuestionHeader header{.title = *title, .currentPage = *current, .totalPages = *total};
    std::ranges::transform(
        nodes, header.frames.begin(), [](const auto& node) { return *node.frame; });
    return header;
}

} // namespace notch
