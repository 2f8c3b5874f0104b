// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Interaction/QuestionFlowIdentity.h"
#include "Interaction/QuestionReminderState.h"
#include "Native/AXValue.h"
#include "Native/Scan/AXRead.h"
#include "Native/Tree/NativeApprovalNode.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace notch {

// What the scans say about questions, and which of them are the same one: a question card keeps its
// token for as long as it is made of the same elements.
class QuestionSighting {
public:
    QuestionReminderState::Observation derive(
        const AXRead& read, std::span<const NativeApprovalNode> roots);
    // What was reported in the end, which may be less than what was derived.
    void reported(const QuestionReminderState::Observation& observation);
    void reset();

private:
    struct Binding {
        std::int32_t pid = 0;
        AXElement window;
        AXElement container;
        AXElement anchor;

        bool operator==(const Binding&) const = default;
    };

    QuestionFlowIdentity flow_;
    std::optional<Binding> binding_; // Where a question was seen last.
    std::string token_; // The token of that binding.
};

} // namespace notch
