// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Approval/ApprovalCard.h"

#include "Native/Approval/CardGeometry.h"
#include "Native/Approval/CardTexts.h"
#include "Native/Approval/NativeApprovalClassifier.h"
#include "Native/Tree/PreOrderWalk.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <tuple>

namespace notch {
namespace {

namespace Classifier = NativeApprovalClassifier;

constexpr double wrapperTolerance = 2; // Points by which a text may exceed its wrapper.

using Nodes = std::span<const NativeApprovalNode>;

// The text itself, or the one text in a group that holds nothing else; null for anything else.
const NativeApprovalNode* unwrappedTextNode(const NativeApprovalNode& node)
{
    if (!node.visible || !node.enabled)
        return nullptr;
    if (node.isLiveLeaf(role::staticText))
        return &node;
    if (!node.is(role::group) || !node.texts.empty() || node.children.size() != 1)
        return nullptr;
    const auto& child = node.children.front();
    if (!child.isLiveLeaf(role::staticText))
        return nullptr;
    if (!node.hasUsableFrame() || !child.hasUsableFrame())
        return nullptr;
    return node.frame->grownBy(wrapperTolerance).contains(*child.frame) ? &child : nullptr;
}

// The group whose children both buttons are; null if there is none.
const NativeApprovalNode* commonParent(const ApprovalButtons& buttons)
{
    if (buttons.allow.size() < 2 || buttons.deny.size() < 2)
        return nullptr;
    const auto ancestors = buttons.commonAncestors();
    if (ancestors.empty() || !ancestors.back()->is(role::group))
        return nullptr;
    const auto* container = ancestors.back();
    const auto isParentIn = [&](const ApprovalButtons::Path& path) {
        return path[path.size() - 2]->id == container->id;
    };
    return isParentIn(buttons.allow) && isParentIn(buttons.deny) ? container : nullptr;
}

// The five that end with allow and deny, one right after the other; empty if there are none.
Nodes cardRow(Nodes siblings, const ApprovalButtons& buttons)
{
    const auto found = std::ranges::find(siblings, buttons.allowID(), &NativeApprovalNode::id);
    const auto allow = static_cast<std::size_t>(found - siblings.begin());
    if (allow < 3 || allow + 1 >= siblings.size() || siblings[allow + 1].id != buttons.denyID())
        return {};
    return siblings.subspan(allow - 3, std::tuple_size_v<CardRow>);
}

bool holdsOnlyACard(Nodes row)
{
    const auto nodes = flattenNodes(row, maxCardNodes);
    return nodes && hasTwoButtons(*nodes) && areVisible(*nodes);
}

// A third button under the two would belong to the card.
bool isFollowedByButton(Nodes row, Nodes siblings)
{
    const auto* after = row.data() + row.size();
    return after != siblings.data() + siblings.size() && after->is(role::button);
}

std::optional<NativeApprovalContext> cardContext(const NativeApprovalNode& title,
    const NativeApprovalNode& risk, const NativeApprovalNode& command)
{
    const auto titles = ownTexts(title);
    const auto risks = ownTexts(risk);
    const auto commands = ownTexts(command);
    if (titles.size() != 1 || risks.size() != 1 || commands.size() != 1)
        return std::nullopt;
    if (!isBulkSummary(titles[0]))
        return std::nullopt;
    if (risks[0] != Classifier::riskText)
        return std::nullopt;
    if (!Classifier::isCompleteCommand(commands[0]) || isBulkSummary(commands[0])
        || commands[0] == Classifier::riskText)
        return std::nullopt;
    return makeContext(titles[0], commands[0]);
}

} // namespace

std::optional<NativeApprovalMatch> flattenedCard(const ApprovalButtons& buttons)
{
    const auto* container = commonParent(buttons);
    if (!container)
        return std::nullopt;
    const Nodes siblings = container->children;
    const auto row = cardRow(siblings, buttons);
    if (row.empty())
        return std::nullopt;
    if (!row[0].isLiveLeaf(role::staticText))
        return std::nullopt;
    const auto* risk = unwrappedTextNode(row[1]);
    const auto* command = unwrappedTextNode(row[2]);
    if (!risk || !command)
        return std::nullopt;
    if (!holdsOnlyACard(row))
        return std::nullopt;
    if (isFollowedByButton(row, siblings))
        return std::nullopt;
    const auto context = cardContext(row[0], *risk, *command);
    if (!context)
        return std::nullopt;
    // Also with the texts in place of their wrappers, which may be larger.
    if (!hasCardGeometry({&row[0], &row[1], &row[2], &row[3], &row[4]})
        || !hasCardGeometry({&row[0], risk, command, &row[3], &row[4]}))
        return std::nullopt;
    const auto contextNodes = flattenNodes(row.first(3), maxCardNodes);
    return makeMatch(NativeApprovalLayout::flattened, buttons, *container, *contextNodes, *context);
}

} // namespace notch
