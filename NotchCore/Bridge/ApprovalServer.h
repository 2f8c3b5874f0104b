// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Bridge/ApprovalBridge.h"
#include "Foundation/SerialQueue.h"
#include "Foundation/UUID.h"
#include "Foundation/UniqueFd.h"
#include "Transport/BridgeSocket.h"
#include "Transport/ListeningSocket.h"
#include "Transport/PollableFlag.h"
#include "Transport/WorkerGroup.h"

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace notch {

// The resident application's end of the bridge:
// - owns the socket, and removes its path at the end unless something else stands there by then;
// - holds one connection for each waiting hook: the open connection is the waiting, and closing it
//   without a line gives the request back to the host;
// - sends a line only for a decision that decide() stored, and stops for nobody else.
//
// stopped --start--> running --stop--> stopped; both any number of times, from any thread but the
// callbacks'.
class ApprovalServer final : public ApprovalBridge {
public:
    explicit ApprovalServer(BridgeDirectory directory = BridgeDirectory::ofUser());
    ~ApprovalServer() override;

    [[nodiscard]] std::optional<TransportError> start(Callbacks callbacks) override;
    // Any thread; returns at once. The worker of the request is awake by then.
    bool decide(const std::string& id, Decision decision) override;
    void stop() override;

private:
    struct Connection {
        UUID token;
        UniqueFd socket; // Its worker's alone.
        PollableFlag decided; // Raised when a decision is stored.
        // Guarded by lock_:
        std::optional<ApprovalRequest> request; // Absent until admitted.
        std::optional<Decision> decision;
    };
    using Connections = std::map<UUID, std::shared_ptr<Connection>>;

    std::optional<TransportError> listen(Callbacks callbacks);
    bool isRunning();

    void acceptConnections(const ListeningSocket& listening);
    void take(UniqueFd socket);

    void serve(Connection& connection);
    bool admit(Connection& connection, const ApprovalRequest& request);
    std::optional<Decision> awaitDecision(Connection& connection, Date expiresAt);
    std::optional<Decision> storedDecision(const Connection& connection);
    void reply(const Connection& connection, const DecisionReply& reply) const;
    void end(Connection& connection);

    const BridgeSocket place_;
    SerialQueue callbackQueue_{"quillmoss-notch.callbacks"};

    std::mutex lifecycle_; // Held by all of start() and stop(); taken before lock_.
    WorkerGroup workers_; // The accept loop and one worker for each connection.
    std::optional<PollableFlag> stopping_; // Written only while no worker runs.

    std::mutex lock_; // Never held over a system call that waits.
    // Guarded by lock_:
    bool running_ = false;
    Connections connections_; // Every accepted one that has not ended.
    std::map<std::string, Connection*> pending_; // By the id of their admitted request.
    std::shared_ptr<const Callbacks> callbacks_;
};

} // namespace notch
