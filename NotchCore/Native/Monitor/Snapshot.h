// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Time.h"
#include "Interaction/QuestionReminderState.h"
#include "Native/Monitor/Candidate.h"
#include "Native/Monitor/MonitorDependencies.h"
#include "Native/Monitor/MonitorTexts.h"
#include "Native/Monitor/QuestionSighting.h"

#include <optional>
#include <span>
#include <string_view>

namespace notch {

// What one pass over the host found.
struct Snapshot {
    std::optional<Candidate> candidate;
    QuestionReminderState::Observation question = QuestionReminderState::Unavailable{};
    Uptime startedAt;
    bool complete = true;
    bool recognizable = false; // A button of a card was seen.
    bool isForeground = false;
    // There was no host, or it was in front: nothing to look at until the desktop changes.
    bool mayRest = false;
    std::string_view status = monitorText::waiting;

    // Where the card is offered at all; questions are read with an owner for what they say.
    struct Wanted {
        bool approvals = false;
        QuestionSighting* questions = nullptr; // Null: not read.
    };
    static Snapshot take(const MonitorDependencies& dependencies, const Wanted& wanted);

private:
    // Each returns whether the pass goes on.
    bool choose(const MonitorDependencies& dependencies, HostApplication& host);
    void judge(const MonitorDependencies& dependencies, const Wanted& wanted, const AXRead& read,
        std::span<const NativeApprovalNode> roots);
    void findCard(const MonitorDependencies& dependencies, const AXRead& read,
        std::span<const NativeApprovalNode> roots);
    void fail(std::string_view why);
};

} // namespace notch
