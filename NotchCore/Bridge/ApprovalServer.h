// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Bridge/ApprovalBridge.h"
#include "Bridge/WaitingRequests.h"
#include "Foundation/SerialQueue.h"
#include "Foundation/UUID.h"
#include "Foundation/UniqueFd.h"
#include "Transport/ListeningSocket.h"
#include "Transport/PollableFlag.h"
#include "Transport/SocketPath.h"
#include "Transport/WorkerGroup.h"

#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace notch {

// The resident application's end of the bridge:
// - owns the socket, and removes its path at the end unless it is another file's by then;
// - holds one connection for each waiting hook: the open connection is the waiting, and closing it
//   without a line gives the request back to the host;
// - sends a line only for a decision that decide() stored for this very connection;
// - closes a connection for which there is no memory, and goes on with the others.
//
// stopped --start--> running --stop--> stopped; both any number of times, from any thread but the
// callbacks'.
class ApprovalServer final : public ApprovalBridge {
public:
    explicit ApprovalServer(SocketDirectory directory = SocketDirectory::ofUser());
    ~ApprovalServer() override;

    [[nodiscard]] std::optional<TransportError> start(Callbacks callbacks) override;
    // Any thread; returns at once. The worker of the request is awake by then.
    bool decide(const std::string& id, Decision decision) override;
    void stop() override;

private:
    struct Connection {
        UUID token; // The request's id for the model.
        PollableFlag decided; // Raised when a decision is stored.
        // Its worker's alone:
        UniqueFd socket;
        std::string idOnWire; // As the hook wrote it; with the rest, once admitted.
        UniqueFd alarm; // Readable from the expiry on.
        SerialQueue::Prepared removal;
    };

    std::optional<TransportError> listen(Callbacks callbacks);
    bool isRunning();

    void acceptConnections(const ListeningSocket& listening);
    void tellUnreachable();
    void take(UniqueFd socket);
    bool enter(const Connection& connection);

    void serve(Connection& connection);
    std::optional<ApprovalRequest> readRequest(const Connection& connection);
    bool admit(Connection& connection, ApprovalRequest request);
    std::optional<Decision> awaitDecision(const Connection& connection);
    std::optional<Decision> settle(const Connection& connection);
    void reply(const Connection& connection, Decision decision) const;
    void end(Connection& connection) noexcept;

    const SocketPath place_;
    SerialQueue callbackQueue_{"quillmoss-notch.callbacks"};

    std::mutex lifecycle_; // Held by all of start() and stop(); taken before lock_.
    WorkerGroup workers_; // The accept loop and one worker for each connection.
    // Written only while no worker runs:
    std::optional<PollableFlag> stopping_;
    std::shared_ptr<const Callbacks> callbacks_;

    std::mutex
        parsing_; // One line at a time is taken apart: a hostile one fills many times its size.

    std::mutex lock_; // Never held over a system call that waits.
    // Guarded by lock_:
    WaitingRequests requests_;
};

} // namespace notch
