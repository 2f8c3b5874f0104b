// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Time.h"
#include "Native/Accessibility.h"
#include "Native/Scan/AXRead.h"
#include "Native/Tree/NativeApprovalNode.h"

#include <optional>
#include <string_view>
#include <vector>

namespace notch {

// Turns the windows of one process into plain trees, within the limits of ScanLimits.h. It never
// fails loudly and never tries again: whatever goes wrong clears a flag of the read.
class AccessibilityScan {
public:
    // Borrowed, all three.
    AccessibilityScan(Accessibility& accessibility, const Clock& clock, AXRead& read);

    // One tree for each window that could be read, in the order of the host's list. With questions
    // included a host that lists no window is read through the one that it calls both main and
    // focused; no approval is ever offered from that.
    std::vector<NativeApprovalNode> readRoots(bool includingQuestions);

private:
    struct NodeValues;

    std::optional<AXElements> windowsToScan(bool includingQuestions);
    std::optional<AXElements> questionFallback(const AXElement& application);
    // A window that the application names, if it is the application's and is a window.
    struct Fallback {
        AXElement element;
        std::int32_t pid = 0;
    };
    std::optional<Fallback> fallbackWindow(
        const AXElement& application, std::string_view attribute);
    std::optional<NativeApprovalNode> readWindow(const AXElement& window);
    std::optional<ScreenRect> frameOf(const AXElement& window);

    std::optional<NativeApprovalNode> readNode(
        const AXElement& element, int depth, const ScreenRect& windowFrame);
    std::optional<NodeValues> readValues(const AXElement& element);
    bool keepTexts(NodeValues& values, NativeApprovalNode& node);
    bool readChildren(const NodeValues& values, int depth, const ScreenRect& windowFrame,
        NativeApprovalNode& node);

    // One attribute within the budget; nothing for one that could not be read in time.
    std::optional<AXValue> boundedAttribute(const AXElement& element, std::string_view name);
    bool inBudget() const;
    // Clears `complete` when the budget is met.
    bool stillInBudget();
    std::nullopt_t incomplete();

    Accessibility& accessibility_;
    const Clock& clock_;
    AXRead& read_;
    AXElements ancestors_; // Of the node that is being read.
};

} // namespace notch
