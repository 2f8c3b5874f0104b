// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/Tree/NativeApprovalNode.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace notch {

// The labels of the card's paging controls.
inline constexpr std::string_view previousLabel = "上一题";
inline constexpr std::string_view nextLabel = "下一题";
inline constexpr std::string_view skipLabel = "全部跳过";
inline constexpr std::array navigationLabels{previousLabel, nextLabel, skipLabel};

enum class LineBreaks : std::uint8_t { refused, allowed };

// A format character, a separator of lines or paragraphs, or a control character, tab included.
bool hasUnsafeQuestionScalars(std::string_view text, LineBreaks lineBreaks);

// The one text that the node shows, line breaks allowed; nothing if it shows two, or an unsafe one.
std::optional<std::string_view> singleText(const NativeApprovalNode& node);

// A number from 1 to `maximum`, in ASCII digits without a leading zero.
std::optional<int> parsePage(std::string_view text, int maximum);

// A text that a person could have been asked: not too long, no placeholder, nothing left out.
bool isAcceptableText(std::string_view text, std::size_t maximumBytes, LineBreaks lineBreaks);

} // namespace notch
