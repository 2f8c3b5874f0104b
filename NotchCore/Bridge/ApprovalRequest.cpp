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

// The text fields under their keys on the wire.
constexpr std::array<std::pair<std::string_view, std::string ApprovalRequest::*>, 7> textFields{{
    {"id", &ApprovalRequest::id},
    {"sessionID", &ApprovalRequest::sessionID},
    {"toolName", &ApprovalRequest::toolName},
    {"toolInputJSON", &ApprovalRequest::toolInputJSON},
    {"cwd", &ApprovalRequest::cwd},
    {"eventName", &ApprovalRequest::eventName},
    {"source", &ApprovalRequest::source},
}};

} // namespace

std::optional<ApprovalRequest> ApprovalRequest::parse(std::string_view line)
{
    const auto document = Json::parse(line);
    if (!document)
        return std::nullopt;
    ApprovalRequest request;
    for (const auto& [key, field] : textFields) {
        const auto* text = document->string(key);
        if (!text)
            return std::nullopt;
        request.*field = *text;
    }
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
    object.emplace(expiresAtKey, JsonNumber(expiresAt.seconds));
    return Json(std::move(object)).compact();
}

} // namespace notch
