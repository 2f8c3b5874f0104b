// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Approval/ApprovalCard.h"

#include "Native/Approval/CardTexts.h"
#include "Native/Approval/NativeApprovalClassifier.h"
#include "Native/Tree/PreOrderWalk.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace notch {
namespace {

namespace Classifier = NativeApprovalClassifier;

constexpr std::size_t ancestorsTried = 5;
constexpr std::size_t maxDepth = 12; // A leaf counts as 1.

std::size_t treeDepth(const NativeApprovalNode& node)
{
    std::size_t deepest = 0;
    for (PreOrderWalk walk({&node, 1}); walk.next();)
        deepest = std::max(deepest, walk.depth());
    return deepest + 1;
}

bool isCardGroup(const NativeApprovalNode& candidate)
{
    if (!candidate.is(role::group))
        return false;
    // The size comes first: all other tests walk the whole tree.
    const auto nodes = flattenNodes({&candidate, 1}, maxCardNodes);
    if (!nodes)
        return false;
    if (treeDepth(candidate) > maxDepth)
        return false;
    if (!hasTwoButtons(*nodes))
        return false;
    return areVisible(*nodes);
}

// Exactly one text of each kind.
std::optional<NativeApprovalContext> cardContext(const NativeApprovalNode& candidate)
{
    std::vector<std::string_view> titles;
    std::vector<std::string_view> risks;
    std::vector<std::string_view> commands;
    for (const auto text : staticTexts(candidate)) {
        auto& kind = isBulkSummary(text) ? titles : text == Classifier::riskText ? risks : commands;
        kind.push_back(text);
    }
    if (titles.size() != 1 || risks.size() != 1 || commands.size() != 1)
        return std::nullopt;
    if (!Classifier::isCompleteCommand(commands[0]))
        return std::nullopt;
    return makeContext(titles[0], commands[0]);
}

} // namespace

std::optional<NativeApprovalMatch> groupedCard(const ApprovalButtons& buttons)
{
    auto candidates = buttons.commonAncestors();
    std::ranges::reverse(candidates);
    candidates.resize(std::min(candidates.size(), ancestorsTried));
    for (const auto* candidate : candidates) {
        if (!isCardGroup(*candidate))
            continue;
        const auto context = cardContext(*candidate);
        if (!context)
            continue;
        return makeMatch(NativeApprovalLayout::grouped, buttons, *candidate,
            staticTextNodes(*candidate), *context);
    }
    return std::nullopt;
}

} // namespace notch
