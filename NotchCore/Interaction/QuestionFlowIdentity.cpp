// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Interaction/QuestionFlowIdentity.h"

#include "Foundation/UUID.h"
#include "Unicode/Scalars.h"

namespace notch {
namespace {

constexpr int maxPages = 100;
constexpr std::size_t maxBindingBytes = 1024;
constexpr std::size_t maxTitleBytes = 8192;
constexpr int absencesThatEndAFlow = 2;
// What a person's text may hold: tab, line breaks, and the two joiners that scripts need.
constexpr std::u32string_view allowedInTitles = U"\t\n\r\u200C\u200D";

bool isPlainText(std::string_view text, std::size_t maxBytes, std::u32string_view allowed)
{
    return text.size() <= maxBytes && !trimmed(text).empty() && !hasControlOrFormat(text, allowed);
}

} // namespace

void QuestionFlowIdentity::reset()
{
    *this = {};
}

void QuestionFlowIdentity::observeUnavailable()
{
    absenceCount_ = 0;
}

void QuestionFlowIdentity::observeAbsence()
{
    if (++absenceCount_ >= absencesThatEndAFlow)
        reset();
}

std::optional<std::string> QuestionFlowIdentity::identify(std::string_view binding,
    std::int32_t pid, std::string_view title, int currentPage, int totalPages)
{
    absenceCount_ = 0;
    if (pid < 1 || totalPages > maxPages || currentPage < 1 || currentPage > totalPages
        || !isPlainText(binding, maxBindingBytes, {})
        || !isPlainText(title, maxTitleBytes, allowedInTitles))
        return std::nullopt;
    if (epoch_ && epoch_->binding == binding && epoch_->pid == pid
        && epoch_->totalPages == totalPages) {
        const auto& seen = epoch_->titles.try_emplace(currentPage, title).first->second;
        if (seen == title)
            return epoch_->flowID;
    }
    // Another card, or another title on a page that was seen: a new flow.
    epoch_ = Epoch{.flowID = UUID::random().text(),
        .binding = std::string(binding),
        .pid = pid,
        .totalPages = totalPages,
        .titles = {{currentPage, std::string(title)}}};
    return epoch_->flowID;
}

} // namespace notch
