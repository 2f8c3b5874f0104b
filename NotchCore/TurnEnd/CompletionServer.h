// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/SerialQueue.h"
#include "Foundation/UniqueFd.h"
#include "Transport/ListeningSocket.h"
#include "Transport/PollableFlag.h"
#include "Transport/SocketPath.h"
#include "Transport/WorkerGroup.h"
#include "TurnEnd/CompletionChannel.h"

#include <mutex>
#include <optional>

namespace notch {

// Takes one connection at a time, reads one line from it and closes it: a bad one costs the next at
// most 0.15 seconds, and nothing is ever sent.
//
// stopped --start--> running --stop--> stopped; both any number of times, from any thread but the
// callback's.
class CompletionServer final : public CompletionChannel {
public:
    explicit CompletionServer(SocketDirectory directory = SocketDirectory::ofUser());
    ~CompletionServer() override;

    [[nodiscard]] std::optional<TransportError> start(OnEvent onEvent) override;
    void stop() override;

private:
    void acceptEvents(const ListeningSocket& listening, const OnEvent& onEvent);
    std::optional<CompletionEvent> readEvent(const UniqueFd& connection) const;

    const SocketPath place_;
    SerialQueue callbacks_{"quillmoss-notch.completion-callbacks"};

    std::mutex lifecycle_; // Held by all of start() and stop().
    WorkerGroup workers_; // The accept loop.
    std::optional<PollableFlag> stopping_; // Present while running; written while no worker runs.
};

} // namespace notch
