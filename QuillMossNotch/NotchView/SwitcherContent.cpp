// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/SwitcherContent.h"

#include "Interaction/ApprovalPresentation.h"
#include "Style/VisibleText.h"

#include <algorithm>

namespace notch {
namespace {

SwitcherContent::Entry entryOf(
    const ApprovalRequest& request, std::span<const SwitcherContent::Entry> known)
{
    const auto made = std::ranges::find_if(known, [&](const auto& entry) {
        return entry.id == request.id && entry.expiresAt == request.expiresAt;
    });
    if (made != known.end())
        return *made;
    const ApprovalPresentation presentation(request);
    return {.id = request.id,
        .expiresAt = request.expiresAt,
        .label = visibleText(presentation.title + " · " + presentation.project, Lines::one)};
}

} // namespace

std::optional<SwitcherContent> SwitcherContent::of(
    const NotchInteraction& interaction, std::span<const Entry> known)
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
        content.entries.push_back(entryOf(request, known));
    return content;
}

} // namespace notch
