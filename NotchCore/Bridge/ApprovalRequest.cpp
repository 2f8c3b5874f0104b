// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/ApprovalRequest.h"

#include "Foundation/Json.h"

#include <array>
#include <cmath>
#include <utility>

namespace notch {
namespace {

constexpr std::string_view expiresAtKey = "expiresAt";
constexpr std::string_view toolInputKey = "toolInputJSON";

// The short text fields under their keys on the wire.
constexpr std::array<std::pair<std::string_view, std::string ApprovalRequest::*>, 6> textFields{{
    {"id", &ApprovalRequest::id},
    {"sessionID", &ApprovalRequest::sessionID},
    {"toolName", &ApprovalRequest::toolName},
    {"cwd", &ApprovalRequest::cwd},
    {"eventName", &ApprovalRequest::eventName},
    {"source", &ApprovalRequest::source},
}};

} // namespace

std::optional<ApprovalRequest> ApprovalRequest::parse(std::string_view line)
{
    constexpr std::size_t members = 1;
    const auto document = Json::parseOutline(line, members);
    if (!document)
        return std::nullopt;
    ApprovalRequest request;
    for (const auto& [key, field] : textFields) {
        const auto* text = document->string(key);
        if (!text)
            return std::nullopt;
        request.*field = *text;
    }
    const auto* toolInput = document->string(toolInputKey);
    if (!toolInput)
        return std::nullopt;
    request.toolInputJSON = *toolInput;
    const auto* expiresAt = document->member(expiresAtKey);
    const auto* seconds = expiresAt ? expiresAt->number() : nullptr;
    if (!seconds || !std::isfinite(seconds->toDouble()))
        return std::nullopt;
    request.expiresAt = Date{seconds->toDouble()};
    return request;
}

std::string ApprovalRequest::serialize() const
{
    Json::Object object;
    for (const auto& [key, field] : textFields)
        object.emplace(key, this->*field);
    object.emplace(toolInputKey, toolInputJSON.string());
    object.emplace(expiresAtKey, JsonNumber(expiresAt.seconds));
    return Json(std::move(object)).compact();
}

} // namespace notch
