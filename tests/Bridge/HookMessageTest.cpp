// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/HookMessage.h"

#include "Bridge/HookEventPolicy.h"
#include "Foundation/UUID.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

constexpr Date now{785000000.25};

constexpr std::string_view goodInput = R"({
    "hook_event_name": "PermissionRequest", "tool_name": "Write", "session_id": "s-1", "cwd": "/a/b",
    "tool_input": {"z": 1.10, "path": "\/x\/y", "a": {"汉": [true, null]}}, "other": [1]})";

TEST(HookMessage, becomesARequest)
{
    const auto request = parseHookInput(goodInput, "quillmossAI", now);
    ASSERT_TRUE(request);
    const ApprovalRequest expected{
        .id = UUID::parse(request->id).value().text(),
        .sessionID = "s-1",
        .toolName = "Write",
        .toolInputJSON = R"({
  "a" : {
    "汉" : [
      true,
      null
    ]
  },
  "path" : "/x/y",
  "z" : 1.10
})",
        .cwd = "/a/b",
        .eventName = "PermissionRequest",
        .expiresAt = now + Seconds{50},
        .source = "quillmossAI",
    };
    EXPECT_EQ(*request, expected);
    EXPECT_NE(parseHookInput(goodInput, "", now)->id, request->id);
}

TEST(HookMessage, leavesTheRestToTheHost)
{
    for (const char* input :
        {
            "",
            "[]",
            R"({"tool_name":"B","tool_input":{}})",
            R"({"hook_event_name":1,"tool_name":"B","tool_input":{}})",
            R"({"hook_event_name":"PermissionRequest\u0000","tool_name":"B","tool_input":{}})",
            R"({"hook_event_name":"PermissionRequest","tool_input":{}})",
            R"({"hook_event_name":"PermissionRequest","tool_name":"ExitPlanMode","tool_input":{}})",
            R"({"hook_event_name":"PermissionRequest","tool_name":"B"})",
            R"({"hook_event_name":"PermissionRequest","tool_name":"B","tool_input":[]})",
            R"({"hook_event_name":"PermissionRequest","tool_name":"B","tool_input":"{}"})",
        })
        EXPECT_FALSE(parseHookInput(input, "quillmoss", now)) << input;
}

TEST(HookEventPolicy, refusesOtherEventsAndToolsThatAskThemselves)
{
    EXPECT_TRUE(HookEventPolicy::acceptsApproval("PermissionRequest", "Bash"));
    EXPECT_FALSE(HookEventPolicy::acceptsApproval("permissionRequest", "Bash"));
    for (const char* tool : {"AskUserQuestion", "ask_user_question", "ASKUSERFORSTRUCTUREDINPUT",
             "ask_user_for_structured_input", "ExitPlanMode", "Exit_Plan_Mode"})
        EXPECT_FALSE(HookEventPolicy::acceptsApproval("PermissionRequest", tool)) << tool;
}

TEST(HookMessage, takesOnlyStringsForSessionAndFolder)
{
    const auto request = parseHookInput(
        R"({"hook_event_name":"PermissionRequest","tool_name":"B","tool_input":{},"session_id":7,"cwd":["/"]})",
        "quillmoss", now);
    ASSERT_TRUE(request);
    EXPECT_EQ(request->sessionID + request->cwd, "");
}

TEST(HookMessage, printsOneLineForADecision)
{
    EXPECT_EQ(hookOutput("PermissionRequest", Decision::allow),
        R"({"decision":"approve","hookSpecificOutput":{"decision":{"behavior":"allow"},)"
        R"("hookEventName":"PermissionRequest","permissionDecision":"allow"}})"
        "\n");
    EXPECT_EQ(hookOutput("PermissionRequest", Decision::deny),
        R"({"decision":"block","hookSpecificOutput":{"decision":{"behavior":"deny"},)"
        R"("hookEventName":"PermissionRequest","permissionDecision":"deny"}})"
        "\n");
    EXPECT_EQ(hookOutput("PermissionRequest", Decision::passthrough), "");
}

} // namespace
} // namespace notch
