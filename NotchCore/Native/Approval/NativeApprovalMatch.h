// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace notch {

// What a bulk-delete card says, to the character.
struct NativeApprovalContext {
    std::string title; // The summary line with both counts.
    std::string risk;
    std::string command; // Complete and untrimmed.
    std::string allowLabel;
    std::string denyLabel;

    bool operator==(const NativeApprovalContext&) const = default;
};

// How the host builds the card: as a group of its own, or as five children of one large group.
enum class NativeApprovalLayout : std::uint8_t { grouped, flattened };

constexpr std::string_view rawValue(NativeApprovalLayout layout)
{
    return layout == NativeApprovalLayout::flattened ? "flattened" : "grouped";
}

// The one bulk-delete card on screen: the ids of its parts, and its words.
struct NativeApprovalMatch {
    std::string windowID;
    std::string containerID;
    std::string allowID;
    std::string denyID;
    std::vector<std::string> contextNodeIDs; // In accessibility order.
    NativeApprovalLayout layout = NativeApprovalLayout::grouped;
    NativeApprovalContext context;

    bool operator==(const NativeApprovalMatch&) const = default;
};

} // namespace notch
