// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "TurnEnd/CompletionEvent.h"

#include "Foundation/Json.h"
#include "Foundation/UUID.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace notch {
namespace {

using Kind = CompletionEvent::Kind;
using Reason = CompletionEvent::Reason;

constexpr std::size_t longestToken = 256;

// isalnum(3) would depend on the locale.
bool isSafe(char character)
{
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z')
        || (character >= '0' && character <= '9')
        || std::string_view("-.:_").find(character) != std::string_view::npos;
}

bool isSafeOrAbsent(const std::optional<std::string>& text)
{
    return !text || CompletionEvent::safeToken(*text);
}

template <class Enumerators>
auto parseName(const Enumerators& all, std::string_view word)
    -> std::optional<typename Enumerators::value_type>
{
    const auto found =
        std::ranges::find_if(all, [word](const auto each) { return name(each) == word; });
    return found == all.end() ? std::nullopt : std::optional(*found);
}

// Reads a member that may be absent but must not be wrong: false when it is no safe token.
bool readToken(const Json& document, std::string_view key, std::optional<std::string>& token)
{
    const auto* value = document.member(key);
    if (!value)
        return true;
    const auto* text = value->string();
    if (!text || !CompletionEvent::safeToken(*text))
        return false;
    token = *text;
    return true;
}

// Only top-level turns count. A mark of a subagent that cannot be read counts as one.
bool mayBeSubagent(const Json& document)
{
    if (document.member("subagent_type") || document.member("parent_session_id"))
        return true;
    const auto* mark = document.member("is_subagent");
    if (!mark || mark->isNull())
        return false;
    const auto* isSubagent = mark->boolean();
    return !isSubagent || *isSubagent;
}

std::optional<Kind> kindOfHook(const std::string* eventName)
{
    if (eventName && *eventName == "UserPromptSubmit")
        return Kind::started;
    if (eventName && *eventName == "FinalStop")
        return Kind::ended;
    return std::nullopt;
}

Reason stopReason(const Json& document)
{
    const auto* word = document.string("final_stop_reason");
    return word ? parseCompletionReason(*word).value_or(Reason::unknown) : Reason::unknown;
}

// An optional text on the wire: absent and null are nothing, any other value is a fault.
bool readText(const Json& document, std::string_view key, std::optional<std::string>& text)
{
    const auto* value = document.member(key);
    if (!value || value->isNull())
        return true;
    if (const auto* string = value->string())
        text = *string;
    return text.has_value();
}

} // namespace

std::string_view name(Kind kind)
{
    switch (kind) {
    case Kind::started:
        return "started";
    case Kind::ended:
        return "ended";
    }
    return "started";
}

std::string_view name(Reason reason)
{
    switch (reason) {
    case Reason::unknown:
        return "unknown";
    case Reason::completed:
        return "completed";
    case Reason::interrupted:
        return "interrupted";
    case Reason::cancelled:
        return "cancelled";
    case Reason::failed:
        return "failed";
    }
    return "unknown";
}

std::optional<Kind> parseCompletionKind(std::string_view word)
{
    return parseName(allCompletionKinds, word);
}

std::optional<Reason> parseCompletionReason(std::string_view word)
{
    return parseName(allCompletionReasons, word);
}

bool CompletionEvent::safeToken(std::string_view text)
{
    return !text.empty() && text.size() <= longestToken && std::ranges::all_of(text, isSafe);
}

std::optional<CompletionEvent> CompletionEvent::decodeHook(std::string_view input, Date now)
{
    if (input.size() > maximumHookInput || !std::isfinite(now.seconds))
        return std::nullopt;
    const auto document = Json::parse(input);
    if (!document)
        return std::nullopt;
    const auto kind = kindOfHook(document->string("hook_event_name"));
    const auto* sessionID = document->string("session_id");
    if (!kind || !sessionID || !safeToken(*sessionID))
        return std::nullopt;

    CompletionEvent event{.sessionID = *sessionID, .kind = *kind, .observedAt = now};
    if (!readToken(*document, "generation_id", event.generationID)
        || !readToken(*document, "agent_id", event.agentID) || mayBeSubagent(*document))
        return std::nullopt;
    if (event.kind == Kind::ended)
        event.reason = stopReason(*document);
    event.id = UUID::random().text();
    return event;
}

std::optional<CompletionEvent> CompletionEvent::parse(std::string_view line)
{
    const auto document = Json::parse(line);
    if (!document)
        return std::nullopt;
    const auto* id = document->string("id");
    const auto* sessionID = document->string("sessionID");
    const auto* kindWord = document->string("kind");
    const auto kind = kindWord ? parseCompletionKind(*kindWord) : std::nullopt;
    const auto* observedAt = document->member("observedAt");
    const auto* seconds = observedAt ? observedAt->number() : nullptr;
    if (!id || !sessionID || !kind || !seconds)
        return std::nullopt;

    CompletionEvent event{
        .id = *id, .sessionID = *sessionID, .kind = *kind, .observedAt = {seconds->toDouble()}};
    std::optional<std::string> reasonWord;
    if (!readText(*document, "generationID", event.generationID)
        || !readText(*document, "agentID", event.agentID)
        || !readText(*document, "reason", reasonWord))
        return std::nullopt;
    if (reasonWord) {
        event.reason = parseCompletionReason(*reasonWord);
        if (!event.reason)
            return std::nullopt;
    }
    return event;
}

std::string CompletionEvent::serialize() const
{
    Json::Object object{{"id", id}, {"sessionID", sessionID}, {"kind", name(kind)},
        {"observedAt", JsonNumber(observedAt.seconds)}};
    if (generationID)
        object.emplace("generationID", *generationID);
    if (agentID)
        object.emplace("agentID", *agentID);
    if (reason)
        object.emplace("reason", name(*reason));
    return Json(std::move(object)).compact();
}

bool CompletionEvent::isValid() const
{
    return UUID::parse(id) && safeToken(sessionID) && isSafeOrAbsent(generationID)
        && isSafeOrAbsent(agentID) && std::isfinite(observedAt.seconds)
        && !(kind == Kind::started && reason);
}

bool CompletionEvent::isFresh(Date now) const
{
    const auto age = now - observedAt;
    return age >= Seconds::zero() && age <= longestAge;
}

} // namespace notch
