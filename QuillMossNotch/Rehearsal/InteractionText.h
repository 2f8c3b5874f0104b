// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Interaction/NotchInteraction.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace notch {

constexpr std::array<std::string_view, 5> receiptNames{
    "allowed", "denied", "returned", "expired", "unavailable"};

// Open or closed; the queue with the current request in brackets; the readiness as given; then
// inside, blocked, details, and the receipt.
inline std::string printed(const NotchInteraction& interaction, const std::string& readiness)
{
    const auto current = interaction.currentID();
    std::string text = interaction.expanded() ? "open" : "closed";
    for (const auto& request : interaction.requests()) {
        const auto shown = request.source == "demo" ? "demo" : request.id;
        text += request.id == current ? " [" + shown + ']' : ' ' + shown;
    }
    text += interaction.selectedID() == current ? "" : " selected otherwise";
    text += readiness;
    text += interaction.pointerInside() ? " inside" : "";
    text += interaction.hoverBlockedUntilExit() ? " blocked" : "";
    text += interaction.showAllParameters ? " details" : "";
    if (const auto& receipt = interaction.feedback()) {
        text += " receipt " + std::string(receiptNames.at(static_cast<std::size_t>(receipt->kind)));
        text += receipt->isDemo ? " demo" : "";
        text += receipt->isNative ? " native" : "";
    }
    return text;
}

} // namespace notch
