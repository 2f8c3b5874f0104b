// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "TurnEnd/CompletionEvent.h"

#include <string>

namespace notch {

// One line for one event, without its id and date: "ended session=s generation=g reason=failed".
inline std::string printed(const CompletionEvent& event)
{
    auto line = std::string(name(event.kind)) + " session=" + event.sessionID;
    if (event.generationID)
        line += " generation=" + *event.generationID;
    if (event.agentID)
        line += " agent=" + *event.agentID;
    if (event.reason)
        line += " reason=" + std::string(name(*event.reason));
    return line;
}

} // namespace notch
