// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Bridge/ApprovalRequest.h"
#include "Native/AXValue.h"
#include "Native/Approval/NativeApprovalMatch.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace notch {

// One verified card: what is offered of it, and the live elements that it is made of.
struct Candidate {
    ApprovalRequest request;
    std::string fingerprint; // 64 lower-case hexadecimal characters.
    std::int32_t pid = 0;
    AXElement window;
    AXElement container;
    AXElement allow;
    AXElement deny;
    AXElements contextElements;
    NativeApprovalLayout layout = NativeApprovalLayout::grouped;
    NativeApprovalContext context;

    // The same card to the last element and character, in another scan. The request, which is made
    // anew by each scan, does not count.
    bool isSameCard(const Candidate& other) const;
};

using Sha256 = std::function<std::string(std::string_view bytes)>; // In lower-case hexadecimal.

// Gives the card its request and its fingerprint, once everything else in it is set.
void describeCard(Candidate& card, const std::string& windowTitle, Date now, const Sha256& sha256);

} // namespace notch
