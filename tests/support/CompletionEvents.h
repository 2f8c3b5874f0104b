// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/UUID.h"
#include "TurnEnd/CompletionChannel.h"
#include "TurnEnd/CompletionEvent.h"
#include "support/Trace.h"

#include <string>

namespace notch {

// The start of a turn, observed that long ago.
inline CompletionEvent startOf(const std::string& session, Seconds age = Seconds::zero())
{
    return {.id = UUID::random().text(), .sessionID = session, .observedAt = Date::now() + -age};
}

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

// A server's callback that prints what the server accepted.
inline CompletionChannel::OnEvent printingTo(Trace& trace)
{
    return [&trace](const CompletionEvent& event) { trace.add(printed(event)); };
}

} // namespace notch
