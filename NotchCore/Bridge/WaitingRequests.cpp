// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/WaitingRequests.h"

#include <algorithm>

namespace notch {

bool WaitingRequests::enter(UUID connection, const PollableFlag& decided)
{
    if (!open_ || connections_.size() >= mostConnections)
        return false;
    return connections_.emplace(connection, Connection{.decided = &decided}).second;
}

bool WaitingRequests::admit(UUID connection, UUID id, Date expiresAt)
{
    const auto found = connections_.find(connection);
    const auto hasID = [&](const auto& each) {
        return each.second.wait && each.second.wait->id == id;
    };
    if (!open_ || found == connections_.end() || std::ranges::any_of(connections_, hasID))
        return false;
    found->second.wait = Wait{.id = id, .expiresAt = expiresAt};
    return true;
}

bool WaitingRequests::decide(UUID connection, Decision decision, Date now)
{
    auto* const wait = waitOf(connection);
    if (!open_ || !wait || wait->settled || wait->decision || wait->expiresAt <= now)
        return false;
    wait->decision = decision;
    connections_.at(connection).decided->raise();
    return true;
}

std::optional<Decision> WaitingRequests::settle(UUID connection)
{
    auto* const wait = waitOf(connection);
    if (!wait)
        return std::nullopt;
    wait->settled = true;
    return wait->decision;
}

bool WaitingRequests::leave(UUID connection) noexcept
{
    const bool admitted = waitOf(connection) != nullptr;
    connections_.erase(connection);
    return admitted;
}

WaitingRequests::Wait* WaitingRequests::waitOf(UUID connection)
{
    const auto found = connections_.find(connection);
    return found != connections_.end() && found->second.wait ? &*found->second.wait : nullptr;
}

} // namespace notch
