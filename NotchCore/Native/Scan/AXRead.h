// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Time.h"
#include "Native/AXValue.h"
#include "Native/Scan/NativeScanCoverage.h"
#include "Native/Scan/ScanLimits.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>

namespace notch {

// The ledger of one scan: how complete it is, what it has cost, and which live element each node
// is. Made for one scan and dropped after it.
struct AXRead {
    AXRead(std::int32_t target, Uptime begun)
        : pid(target)
        , deadline(begun + scan::budget)
    {
    }

    std::int32_t pid = 0; // The process that is read.
    bool complete = true; // Every read succeeded within all budgets.
    bool questionTreeComplete = true; // No node's children looked like an error.
    int primaryWindowCount = -1; // Windows that the host lists.
    bool agreedQuestionFallback = false; // The one root is no listed window.
    int scannedRootCount = 0; // Windows that were read.
    std::unordered_map<std::string, AXElement> elements; // By node id.
    std::unordered_map<std::string, std::string> windowTitles; // By root id.
    int nodes = 0; // Begun so far.
    std::size_t textBytes = 0; // Of all texts kept so far.
    Uptime deadline;

    NativeScanCoverage coverage() const
    {
        return {.primaryWindowCount = primaryWindowCount,
            .scannedRootCount = scannedRootCount,
            .treeComplete = complete,
            .questionTreeComplete = questionTreeComplete,
            .agreedQuestionFallback = agreedQuestionFallback};
    }
    // Nothing for an id that this scan did not give.
    std::optional<AXElement> element(const std::string& id) const
    {
        const auto found = elements.find(id);
        return found == elements.end() ? std::nullopt : std::optional(found->second);
    }
    std::string windowTitle(const std::string& rootID) const
    {
        const auto found = windowTitles.find(rootID);
        return found == windowTitles.end() ? std::string(untitledWindow) : found->second;
    }

    static constexpr std::string_view untitledWindow = "QuillMoss 窗口";
};

} // namespace notch
