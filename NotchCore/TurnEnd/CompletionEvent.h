// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Time.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace notch {

// A turn of the host started or ended: the one record of the turn-end channel. Whatever the host
// said is hostile: an event carries short, plain tokens only, never free text.
struct CompletionEvent {
    enum class Kind : std::uint8_t { started, ended };
    enum class Reason : std::uint8_t { unknown, completed, interrupted, cancelled, failed };

    std::string id; // Canonical text of a UUID that the hook process made.
    std::string sessionID;
    std::optional<std::string> generationID; // The host's name for this turn.
    std::optional<std::string> agentID;
    Kind kind = Kind::started;
    std::optional<Reason> reason; // Of an end only.
    Date observedAt; // When the hook saw it.

    bool operator==(const CompletionEvent&) const = default;

    // More than this on a hook's stdin is no event; it is not even parsed.
    static constexpr std::size_t maximumHookInput = 65536;
    // What one may take on the wire, without its line feed. The longest valid one has a quarter.
    static constexpr std::size_t maximumPayload = 4096;
    // What comes later than this is stale: the turn it tells of may long be over.
    static constexpr Seconds longestAge{3.0};

    // 1 to 256 bytes, each an ASCII letter or digit or one of - . : _
    static bool safeToken(std::string_view text);

    // What a hook process read on stdin, as an event with a fresh id observed at `now`. Nothing for
    // any other hook, for a turn of a subagent, and for whatever does not look exactly right.
    static std::optional<CompletionEvent> decodeHook(std::string_view input, Date now);

    // The JSON on the wire. What was parsed is well-formed, yet not necessarily valid.
    static std::optional<CompletionEvent> parse(std::string_view line);
    // The event must be valid.
    std::string serialize() const;

    // Every text is safe, the date is finite, and a start has no reason.
    bool isValid() const;
    // Not from the future and no older than longestAge; false when either date is not finite.
    bool isFresh(Date now) const;
};

inline constexpr std::array allCompletionKinds{
    CompletionEvent::Kind::started, CompletionEvent::Kind::ended};
inline constexpr std::array allCompletionReasons{CompletionEvent::Reason::unknown,
    CompletionEvent::Reason::completed, CompletionEvent::Reason::interrupted,
    CompletionEvent::Reason::cancelled, CompletionEvent::Reason::failed};

// The words on the wire, which are the enumerators' names.
std::string_view name(CompletionEvent::Kind kind);
std::string_view name(CompletionEvent::Reason reason);
// Nothing for any other word.
std::optional<CompletionEvent::Kind> parseCompletionKind(std::string_view word);
std::optional<CompletionEvent::Reason> parseCompletionReason(std::string_view word);

} // namespace notch
