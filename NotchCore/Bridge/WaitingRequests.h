// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Bridge/Decision.h"
#include "Foundation/Time.h"
#include "Foundation/UUID.h"
#include "Transport/PollableFlag.h"

#include <cstddef>
#include <map>
#include <optional>

namespace notch {

// Which connections wait for what, as a value: everything that the approval server decides under
// its lock. It takes the time as an argument, makes no call out but to raise a flag, and refuses
// silently. A connection goes by its token, so that a decision cannot reach any other, whatever id
// its hook uses.
//
//   enter --> admit --> decide, once --> settle --> leave
//
// settle and leave may come at any time; what was not admitted can only leave.
class WaitingRequests {
public:
    static constexpr std::size_t mostConnections = 32;

    bool isOpen() const { return open_; }
    void open() { open_ = true; }
    // Nothing can enter, be admitted or be decided any more.
    void close() { open_ = false; }

    // False: closed or full. The flag is raised when a decision is stored.
    bool enter(UUID connection, const PollableFlag& decided);
    // False: closed, or another connection waits with this id.
    bool admit(UUID connection, UUID id, Date expiresAt);
    // False: nothing waits there, it has a decision already, or its time is over.
    bool decide(UUID connection, Decision decision, Date now);
    // What was decided. From here on decide() refuses, so that no decision is accepted and lost.
    std::optional<Decision> settle(UUID connection);
    // True when it was admitted.
    bool leave(UUID connection) noexcept;

private:
    struct Wait {
        UUID id;
        Date expiresAt;
        std::optional<Decision> decision;
        bool settled = false;
    };
    struct Connection {
        const PollableFlag* decided = nullptr;
        std::optional<Wait> wait; // Absent until admitted.
    };

    Wait* waitOf(UUID connection);

    bool open_ = false;
    std::map<UUID, Connection> connections_;
};

} // namespace notch
