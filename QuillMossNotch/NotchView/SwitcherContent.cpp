// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/SwitcherContent.h"

#include "Interaction/ApprovalPresentation.h"
#include "Style/VisibleText.h"

namespace notch {
namespace {

SwitcherContent::Entry entryOf(const ApprovalRequest& request)
{
    const ApprovalPresentation presentation(request);
    return {.id = request.id,
        .label = visibleText(presentation.title + " · " + presentation.project, Lines::one)};
}

} // namespace

std::optional<SwitcherContent> SwitcherContent::of(const NotchInteraction& interaction)
{
    const auto& requests = interaction.requests();
    const auto* current = interaction.current();
    if (requests.size() < 2 || !current)
        return std::nullopt;
    SwitcherContent content;
    content.position = static_cast<std::size_t>(current - requests.data());
    content.text =
        "待确认 " + std::to_string(content.position + 1) + " / " + std::to_string(requests.size());
    for (const auto& request : requests)
        content.entries.push_back(entryOf(request));
    return content;
}

} // namespace notch
