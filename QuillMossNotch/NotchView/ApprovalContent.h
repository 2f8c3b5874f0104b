// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Bridge/ApprovalRequest.h"
#include "Foundation/Time.h"
#include "Interaction/NotchInteraction.h"
#include "Style/Symbol.h"

#include <optional>
#include <string>
#include <string_view>

namespace notch {

// A request that waits for the person, in all the words round it. Texts of the request itself are
// safe to show (see VisibleText.h), as plain text only.
struct ApprovalContent {
    bool isNative = false; // A card in the host's own window.
    std::string_view banner; // Empty: none.
    std::string title; // Cut in its middle where a tool's name is beyond all measure.
    std::string wholeTitle;
    std::string description; // Begins with descriptionLeadIn; empty: none.
    Symbol originSymbol = Symbol::none;
    std::string origin;
    std::string source;
    std::string sourceToolTip;
    std::string_view chip;
    std::string command; // What the command view shows.
    std::string_view detailsHeader;
    std::string_view detailsChip; // Empty: none.
    std::string parameters; // What the details show.
    std::string_view negativeText;
    std::string_view positiveText;

    explicit ApprovalContent(const ApprovalRequest& request);

    bool operator==(const ApprovalContent&) const = default;
};

inline constexpr std::string_view descriptionLeadIn = "原请求说明：";
inline constexpr std::string_view onlyThisText = "只允许这一项";
inline constexpr std::string_view toHostText = "去 QuillMoss 处理 ↗";

// How long the person has left.
struct TimeLine {
    std::string seconds;
    std::string_view note;
    bool urgent = false;
    Seconds nextChange{1}; // When the seconds read differently.

    // Nothing for a card that waits without end.
    static std::optional<TimeLine> of(const ApprovalRequest& request, Date now);
};

// A button's picture and words.
struct ButtonContent {
    Symbol symbol = Symbol::none;
    std::string_view text;
};
ButtonContent detailsToggle(const NotchInteraction& interaction);
ButtonContent copyButton(
    const ApprovalRequest& request, const std::optional<std::string>& copiedRequestID);
inline constexpr std::string_view copyToolTip = "复制当前展示的完整内容";

} // namespace notch
