// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Bridge/ApprovalRequest.h"
#include "Bridge/Decision.h"
#include "Transport/TransportError.h"

#include <functional>
#include <optional>
#include <string>

namespace notch {

// The resident application's end of the approval bridge, as its model sees it.
class ApprovalBridge {
public:
    // Run on a thread of the bridge, one at a time, in order; never on the main thread.
    struct Callbacks {
        std::function<void(ApprovalRequest)> onRequest;
        // Follows onRequest once for every request, in whatever way the request ended.
        std::function<void(std::string id)> onRemoval;
        // At most once a start: the socket's path was removed or replaced, so that no hook can
        // reach this bridge any more. Requests that wait already are not affected.
        std::function<void()> onUnreachable;
    };

    virtual ~ApprovalBridge() = default;

    // Nothing on success.
    [[nodiscard]] virtual std::optional<TransportError> start(Callbacks callbacks) = 0;
    // True when the decision was stored for a request that still waits and has none yet. The id is
    // the one that onRequest gave.
    virtual bool decide(const std::string& id, Decision decision) = 0;
    // Ends every wait without a reply; returns when no callback will be queued any more.
    virtual void stop() = 0;
};

} // namespace notch
