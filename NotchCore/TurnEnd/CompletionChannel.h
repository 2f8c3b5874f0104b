// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Transport/TransportError.h"
#include "TurnEnd/CompletionEvent.h"

#include <functional>
#include <optional>

namespace notch {

// The resident application's end of the turn-end channel, as its model sees it.
class CompletionChannel {
public:
    // Runs on a thread of the channel, one at a time, in the order in which hooks connected; never
    // on the main thread. Every event is valid and was fresh on arrival.
    using OnEvent = std::function<void(CompletionEvent)>;

    virtual ~CompletionChannel() = default;

    // Nothing on success.
    [[nodiscard]] virtual std::optional<TransportError> start(OnEvent onEvent) = 0;
    // Returns when no event will be queued any more. One that is queued may still come.
    virtual void stop() = 0;
};

} // namespace notch
