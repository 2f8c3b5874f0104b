// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Transport/SocketPath.h"
#include "TurnEnd/CompletionEvent.h"

#include <unistd.h>

namespace notch {

// A turn-end hook process. It runs inside the host's turn and must never slow it: it prints
// nothing, waits for no answer, and gives up without a word as soon as one of its time limits is
// over, which are half a second in all and monotonic.
class CompletionHookClient {
public:
    explicit CompletionHookClient(SocketDirectory directory = SocketDirectory::ofUser());

    // Reads the host's JSON object to its end and sends the event that it tells of, if any. The
    // descriptor is borrowed.
    void run(int input = STDIN_FILENO) const;

    // True when the whole line was handed to the system.
    bool send(const CompletionEvent& event) const;

private:
    SocketPath socket_;
};

} // namespace notch
