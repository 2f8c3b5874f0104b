// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/Decision.h"

#include "Foundation/Json.h"

namespace notch {

std::string_view name(Decision decision)
{
    switch (decision) {
    case Decision::passthrough:
        return "passthrough";
    case Decision::deny:
        return "deny";
    case Decision::allow:
        return "allow";
    }
    return "passthrough";
}

std::optional<Decision> parseDecision(std::string_view word)
{
    for (const auto decision : allDecisions) {
        if (name(decision) == word)
            return decision;
    }
    return std::nullopt;
}

std::optional<DecisionReply> DecisionReply::parse(std::string_view line)
{
    const auto document = Json::parse(line);
    const auto* id = document ? document->string("id") : nullptr;
    const auto* word = document ? document->string("decision") : nullptr;
    const auto decision = word ? parseDecision(*word) : std::nullopt;
    if (!id || !decision)
        return std::nullopt;
    return DecisionReply{.id = *id, .decision = *decision};
}

std::string DecisionReply::serialize() const
{
    return Json(Json::Object{{"id", id}, {"decision", name(decision)}}).compact();
}

} // namespace notch
