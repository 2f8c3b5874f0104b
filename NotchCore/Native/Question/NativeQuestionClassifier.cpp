// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Question/NativeQuestionClassifier.h"

#include "Native/Question/QuestionCard.h"
#include "Native/Question/QuestionTexts.h"
#include "Native/Tree/PreOrderWalk.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <unordered_set>

namespace notch::NativeQuestionClassifier {
namespace {

using Nodes = std::span<const NativeApprovalNode>;

bool shows(const NativeApprovalNode& button, std::string_view label)
{
    return std::ranges::find(button.texts, label) != button.texts.end();
}

// One button of each label in the whole scan, which is no larger than may be walked.
bool hasOneOfEachControl(Nodes in)
{
    std::array<int, navigationLabels.size()> counts{};
    std::size_t walked = 0;
    for (PreOrderWalk walk(in); const auto* node = walk.next();) {
        if (++walked > maxQuestionNodes || walk.depth() > maxQuestionDepth)
            return false;
        if (!node->is(role::button))
            continue;
        for (std::size_t i = 0; i < counts.size(); ++i)
            counts[i] += shows(*node, navigationLabels[i]) ? 1 : 0;
    }
    return std::ranges::all_of(counts, [](int count) { return count == 1; });
}

bool hasDistinctIDs(Nodes in)
{
    std::unordered_set<std::string_view> seen;
    for (PreOrderWalk walk(in); const auto* node = walk.next();) {
        if (node->id.empty() || !seen.insert(node->id).second)
            return false;
    }
    return true;
}

// It can be seen and used, and has no place that makes no sense.
bool isValid(const NativeApprovalNode& node)
{
    return node.visible && node.enabled && (!node.frame || node.hasUsableFrame());
}

// What is not inside the window by way of valid nodes only is no part of a card.
void scanWindow(const NativeApprovalNode& window, std::vector<NativeQuestionMatch>& matches)
{
    for (PreOrderWalk walk({&window, 1}); const auto* node = walk.next();) {
        const bool isOtherWindow = node->is(role::window) && node != &window;
        if (isOtherWindow || !isValid(*node)) {
            walk.skipChildren();
            continue;
        }
        if (node->is(role::group))
            std::ranges::move(
                scanGroup(*node, window.id, *window.frame), std::back_inserter(matches));
    }
}

} // namespace

bool hasRecognizableQuestion(Nodes in)
{
    for (PreOrderWalk walk(in); const auto* node = walk.next();) {
        if (node->is(role::button)
            && std::ranges::any_of(
                navigationLabels, [&](std::string_view label) { return shows(*node, label); }))
            return true;
    }
    return false;
}

// The cheap count goes first and the costly comparison of ids last, so that a scan without a card
// costs one walk, and a scan full of skip buttons is not read once for each of them.
std::optional<NativeQuestionMatch> uniqueMatch(Nodes in)
{
    if (!hasOneOfEachControl(in))
        return std::nullopt;
    std::vector<NativeQuestionMatch> matches;
    for (const auto& root : in) {
        if (root.is(role::window) && root.hasUsableFrame())
            scanWindow(root, matches);
    }
    if (matches.size() != 1 || !hasDistinctIDs(in))
        return std::nullopt;
    return matches.front();
}

} // namespace notch::NativeQuestionClassifier
