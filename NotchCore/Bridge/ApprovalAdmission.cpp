// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/ApprovalAdmission.h"

#include "Bridge/HookEventPolicy.h"
#include "Bridge/HookMessage.h"
#include "Foundation/Json.h"
#include "Foundation/UUID.h"

#include <algorithm>

namespace notch {
namespace {

bool isObject(std::string_view json)
{
    constexpr std::size_t itself = 0;
    const auto value = Json::parseOutline(json, itself);
    return value && value->object();
}

} // namespace

std::optional<ApprovalRequest> admittedRequest(std::string_view line, Date now)
{
    auto request = ApprovalRequest::parse(line);
    if (!request || !UUID::parse(request->id)
        || !HookEventPolicy::acceptsApproval(request->eventName, request->toolName)
        || request->expiresAt <= now || !isObject(request->toolInputJSON))
        return std::nullopt;
    request->expiresAt = std::min(request->expiresAt, now + requestLifetime);
    return request;
}

} // namespace notch
