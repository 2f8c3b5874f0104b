// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/HookMessage.h"

#include "Bridge/HookEventPolicy.h"
#include "Foundation/Json.h"
#include "Foundation/UUID.h"
#include "Foundation/Utf8.h"
#include "Transport/Framing.h"

#include <utility>

namespace notch {
namespace {

std::string textOrEmpty(const Json& input, std::string_view key)
{
    const auto* text = input.string(key);
    return text ? *text : std::string();
}

std::string outputLine(std::string_view eventName, const char* verdict, const char* behavior)
{
    const Json::Object specific{
        {"hookEventName", eventName},
        {"permissionDecision", behavior},
        {"decision", Json::Object{{"behavior", behavior}}},
    };
    return Json(Json::Object{{"decision", verdict}, {"hookSpecificOutput", specific}}).compact()
         + '\n';
}

} // namespace

std::optional<ApprovalRequest> parseHookInput(
    std::string_view input, std::string_view source, Date now)
{
    const auto document = Json::parse(input);
    const auto* eventName = document ? document->string("hook_event_name") : nullptr;
    const auto* toolName = document ? document->string("tool_name") : nullptr;
    if (!eventName || !toolName || !HookEventPolicy::acceptsApproval(*eventName, *toolName))
        return std::nullopt;
    const auto* toolInput = document->member("tool_input");
    if (!toolInput || !toolInput->object())
        return std::nullopt;
    auto toolInputJSON = toolInput->pretty(maximumFramePayload);
    if (!toolInputJSON)
        return std::nullopt;
    return ApprovalRequest{
        .id = UUID::random().text(),
        .sessionID = textOrEmpty(*document, "session_id"),
        .toolName = *toolName,
        .toolInputJSON = std::move(*toolInputJSON),
        .cwd = textOrEmpty(*document, "cwd"),
        .eventName = *eventName,
        .expiresAt = now + requestLifetime,
        .source = repairedUtf8(source),
    };
}

std::string hookOutput(std::string_view eventName, Decision decision)
{
    switch (decision) {
    case Decision::allow:
        return outputLine(eventName, "approve", "allow");
    case Decision::deny:
        return outputLine(eventName, "block", "deny");
    case Decision::passthrough:
        break;
    }
    return {};
}

} // namespace notch
