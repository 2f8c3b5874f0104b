// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/SharedText.h"
#include "Foundation/Time.h"

#include <optional>
#include <string>
#include <string_view>

namespace notch {

// The event name of a card in the host's own window; it never comes over the bridge.
inline constexpr std::string_view nativeApprovalEventName = "NativeApproval";

// One permission request, on the wire and in memory. Every field is required on the wire.
struct ApprovalRequest {
    // Text of a UUID. On the wire the hook's; in the resident application the server's own, one for
    // each connection, so that no other hook can come by a decision by using the same id.
    std::string id;
    std::string sessionID; // The host's session; empty when it gave none.
    std::string toolName;
    SharedText toolInputJSON; // Text of a JSON object, up to a mebibyte.
    std::string cwd; // The host's working directory; empty when it gave none.
    std::string eventName;
    Date expiresAt;
    std::string source; // Edition that ran the hook, as --source gave it; not validated.

    bool isNative() const { return eventName == nativeApprovalEventName; }

    bool operator==(const ApprovalRequest&) const = default;

    // Nothing when the text is no JSON object or a field is missing or of another type.
    static std::optional<ApprovalRequest> parse(std::string_view line);
    std::string serialize() const;
};

} // namespace notch
