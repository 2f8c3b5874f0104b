// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Rehearsal/StartedModel.h"

#include <string>

namespace notch {

// A model that is brought into a state by the words of its traces, with requests as people see
// them and these words more: a hook that asks with "edit", "empty" or "long" texts, the number of
// "editions", "trusted" and "unreachable".
struct Scene : StartedModel {
    Scene();

    // What the hook of most scenes asks.
    ApprovalRequest command(const std::string& id) const;
    void arrive(const ApprovalRequest& request);
    // The host waits on a question.
    void wait(const std::string& title);
};

} // namespace notch
