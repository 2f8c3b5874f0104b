// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace notch {

// What a person chose. Passthrough gives the request back to the host's own flow.
enum class Decision : std::uint8_t { passthrough, deny, allow };

inline constexpr std::array allDecisions{Decision::passthrough, Decision::deny, Decision::allow};

// The word on the wire: "allow", "deny", "passthrough".
std::string_view name(Decision decision);
// Nothing for any other word.
std::optional<Decision> parseDecision(std::string_view word);

// The server's one line to a hook.
struct DecisionReply {
    std::string id; // The answered request's.
    Decision decision = Decision::passthrough;

    bool operator==(const DecisionReply&) const = default;

    static std::optional<DecisionReply> parse(std::string_view line);
    std::string serialize() const;
};

} // namespace notch
