// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Approval/CardTexts.h"

#include "Native/Tree/PreOrderWalk.h"
#include "Unicode/Pattern.h"
#include "Unicode/Scalars.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>
#include <optional>
#include <system_error>

namespace notch {
namespace {

std::optional<std::int64_t> number(std::string_view digits)
{
    std::int64_t value = 0;
    const auto* end = digits.data() + digits.size();
    const auto [last, error] = std::from_chars(digits.data(), end, value);
    return error == std::errc() && last == end ? std::optional(value) : std::nullopt;
}

} // namespace

bool hasUnsafeScalars(std::string_view text)
{
    return hasControlOrFormat(text, U"\t\n\r");
}

std::vector<std::string_view> ownTexts(const NativeApprovalNode& staticText)
{
    std::vector<std::string_view> shown;
    std::ranges::copy_if(staticText.texts, std::back_inserter(shown),
        [](std::string_view text) { return !trimmed(text).empty(); });
    std::ranges::sort(shown);
    shown.erase(std::unique(shown.begin(), shown.end()), shown.end());
    return shown;
}

std::vector<const NativeApprovalNode*> staticTextNodes(const NativeApprovalNode& node)
{
    std::vector<const NativeApprovalNode*> found;
    for (PreOrderWalk walk({&node, 1}); const auto* inner = walk.next();) {
        const bool isText = inner->is(role::staticText);
        if (isText && !ownTexts(*inner).empty())
            found.push_back(inner);
        if (isText || inner->is(role::button))
            walk.skipChildren();
    }
    return found;
}

std::vector<std::string_view> staticTexts(const NativeApprovalNode& node)
{
    std::vector<std::string_view> texts;
    for (const auto* shown : staticTextNodes(node))
        std::ranges::copy(ownTexts(*shown), std::back_inserter(texts));
    return texts;
}

bool isBulkSummary(std::string_view text)
{
    static const Pattern summary(R"(^检测到批量删除操作[：:]\s*累计删除数量\s*([1-9][0-9]*)\s*项)"
                                 R"([，,]\s*阈值\s*([1-9][0-9]*)$)");
    const auto groups = summary.firstMatch(text);
    if (!groups)
        return false;
    const auto count = number((*groups)[0]);
    const auto threshold = number((*groups)[1]);
    return count && threshold && *count >= *threshold;
}

} // namespace notch
