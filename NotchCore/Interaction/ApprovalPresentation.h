// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Bridge/ApprovalRequest.h"
#include "Foundation/Json.h"

#include <optional>
#include <string>
#include <string_view>

namespace notch {

// Where a request has no working directory.
inline constexpr std::string_view missingDirectory = "未提供目录";

// An approval request in the words that the notch shows. A pure function of the request.
struct ApprovalPresentation {
    std::string title; // What the tool is about to do.
    std::string primaryText; // The command, or the raw input; never shortened here.
    std::optional<std::string> description; // The tool's own words.
    std::string project; // Last component of the directory, or a placeholder.
    bool hasAdditionalParameters = false; // The input has keys beyond those already shown.

    explicit ApprovalPresentation(const ApprovalRequest& request);
    // The same for a caller that has already read the request's input by inputOf().
    ApprovalPresentation(const ApprovalRequest& request, const Json& input);

    // The tool's input as an object, which is empty where the text is none.
    static Json inputOf(const ApprovalRequest& request);

    bool operator==(const ApprovalPresentation&) const = default;
};

} // namespace notch
