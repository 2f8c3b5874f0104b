// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Monitor/QuestionSighting.h"

#include "Foundation/UUID.h"
#include "Native/Question/NativeQuestionClassifier.h"

namespace notch {

using Unavailable = QuestionReminderState::Unavailable;
using Absent = QuestionReminderState::Absent;

QuestionReminderState::Observation QuestionSighting::derive(
    const AXRead& read, std::span<const NativeApprovalNode> roots)
{
    const auto coverage = read.coverage();
    if (!coverage.questionPositiveComplete())
        return Unavailable{};
    const auto match = NativeQuestionClassifier::uniqueMatch(roots);
    if (!match) {
        const bool isAbsent = coverage.questionAbsenceComplete()
                           && !NativeQuestionClassifier::hasRecognizableQuestion(roots);
        return isAbsent ? QuestionReminderState::Observation(Absent{}) : Unavailable{};
    }
    const auto window = read.element(match->windowID);
    const auto container = read.element(match->containerID);
    const auto anchor = read.element(match->anchorID);
    if (!window || !container || !anchor)
        return Unavailable{};
    const Binding seen{read.pid, *window, *container, *anchor};
    if (binding_ != seen) {
        binding_ = seen;
        token_ = UUID::random().text();
    }
    const auto flowID =
        flow_.identify(token_, read.pid, match->title, match->currentPage, match->totalPages);
    if (!flowID)
        return Unavailable{};
    return QuestionReminder{*flowID, read.pid, match->title, match->currentPage, match->totalPages};
}

void QuestionSighting::reported(const QuestionReminderState::Observation& observation)
{
    if (std::holds_alternative<Unavailable>(observation))
        flow_.observeUnavailable();
    else if (std::holds_alternative<Absent>(observation))
        flow_.observeAbsence();
}

void QuestionSighting::reset()
{
    flow_.reset();
    binding_.reset();
}

} // namespace notch
