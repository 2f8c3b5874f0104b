// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Question/QuestionTexts.h"

#include "Foundation/Utf8.h"
#include "Unicode/Scalars.h"

#include <algorithm>
#include <charconv>

namespace notch {
namespace {

constexpr std::size_t maxPageBytes = 3;
constexpr std::ptrdiff_t maxLines = 16;

// What the host shows in place of a question, in lower case.
constexpr std::array<std::string_view, 17> rejectedTerms{previousLabel, nextLabel, skipLabel, "/",
    "发送", "send", "其他补充…", "其他补充...", "其他（输入你的答案）", "标题", "问题标题",
    "占位标题", "placeholder", "question title", "title", "loading", "加载中"};

// Signs of a text that is cut short, or of a template that was not filled in.
constexpr std::array<std::string_view, 7> rejectedParts{
    "\u2026", "...", "\u22EF", "{{", "}}", "${", "<placeholder>"};

bool isAsciiDigit(char character)
{
    return character >= '0' && character <= '9';
}

} // namespace

bool hasUnsafeQuestionScalars(std::string_view text, LineBreaks lineBreaks)
{
    const auto holds = [&](std::string_view part) { return text.find(part) != text.npos; };
    const bool allowed = lineBreaks == LineBreaks::allowed;
    return hasControlOrFormat(text, allowed ? U"\n\r" : U"") || holds("\u2028") || holds("\u2029");
}

std::optional<std::string_view> singleText(const NativeApprovalNode& node)
{
    std::optional<std::string_view> single;
    for (const auto& text : node.texts) {
        if (text.empty())
            continue;
        if (single && *single != text)
            return std::nullopt;
        single = text;
    }
    if (!single || hasUnsafeQuestionScalars(*single, LineBreaks::allowed))
        return std::nullopt;
    return single;
}

std::optional<int> parsePage(std::string_view text, int maximum)
{
    if (text.empty() || text.size() > maxPageBytes || !std::ranges::all_of(text, isAsciiDigit)
        || text.starts_with('0'))
        return std::nullopt;
    int page = 0;
    std::from_chars(text.data(), text.data() + text.size(), page);
    return page >= 1 && page <= maximum ? std::optional(page) : std::nullopt;
}

bool isAcceptableText(std::string_view text, std::size_t maximumBytes, LineBreaks lineBreaks)
{
    if (text.size() > maximumBytes)
        return false;
    if (hasUnsafeQuestionScalars(text, lineBreaks))
        return false;
    const auto words = trimmed(text);
    if (words.empty())
        return false;
    if (std::ranges::count(text, '\n') >= maxLines)
        return false;
    // The terms have no capitals beyond ASCII, for which this lower case is exact.
    if (std::ranges::find(rejectedTerms, lowercasedName(words)) != rejectedTerms.end())
        return false;
    if (std::ranges::any_of(
            rejectedParts, [&](std::string_view part) { return text.find(part) != text.npos; }))
        return false;
    return !isDecimalDigits(words);
}

} // namespace notch
