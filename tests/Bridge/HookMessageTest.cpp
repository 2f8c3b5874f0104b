// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/HookMessage.h"

#include "Foundation/UUID.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

using namespace std::string_literals;

constexpr Date now{785000000.25};

constexpr std::string_view goodInput = R"({
    "hook_event_name": "PermissionRequest", "tool_name": "Write", "session_id": "s-1", "cwd": "/a/b",
    "tool_input": {"z": 1.10, "path": "\/x\/y", "a": {"汉": [true, null]}}, "other": [1]})";

TEST(HookMessage, becomesARequest)
{
    const auto request = parseHookInput(goodInput, "quillmossAI", now);
    ASSERT_TRUE(request);
    const auto id = UUID::parse(request->id);
    ASSERT_TRUE(id);
    EXPECT_EQ(*request, (ApprovalRequest{
                            .id = id->text(),
                            .sessionID = "s-1",
                            .toolName = "Write",
                            .toolInputJSON = "{\n"
                                             "  \"a\" : {\n"
                                             "    \"汉\" : [\n"
                                             "      true,\n"
                                             "      null\n"
                                             "    ]\n"
                                             "  },\n"
                                             "  \"path\" : \"/x/y\",\n"
                                             "  \"z\" : 1.10\n"
                                             "}",
                            .cwd = "/a/b",
                            .eventName = "PermissionRequest",
                            .expiresAt = now + Seconds{50},
                            .source = "quillmossAI",
                        }));
    EXPECT_NE(parseHookInput(goodInput, "", now)->id, request->id);
}

TEST(HookMessage, leavesTheRestToTheHost)
{
    struct Row {
        const char* name;
        std::string input;
    };
    for (const auto& row :
        {
            Row{"nothing", ""},
            Row{"no JSON", "rm -rf"},
            Row{"array", "[]"},
            Row{"empty object", "{}"},
            Row{"no event", R"({"tool_name":"B","tool_input":{}})"},
            Row{"event is no string", R"({"hook_event_name":1,"tool_name":"B","tool_input":{}})"},
            Row{"event in other case",
                R"({"hook_event_name":"permissionrequest","tool_name":"B","tool_input":{}})"},
            Row{"event with a NUL behind it",
                R"({"hook_event_name":"PermissionRequest\u0000","tool_name":"B","tool_input":{}})"},
            Row{"no tool", R"({"hook_event_name":"PermissionRequest","tool_input":{}})"},
            Row{"question tool",
                R"({"hook_event_name":"PermissionRequest","tool_name":"AskUserQuestion","tool_input":{}})"},
            Row{"no input", R"({"hook_event_name":"PermissionRequest","tool_name":"B"})"},
            Row{"input is an array",
                R"({"hook_event_name":"PermissionRequest","tool_name":"B","tool_input":[]})"},
            Row{"input is a string",
                R"({"hook_event_name":"PermissionRequest","tool_name":"B","tool_input":"{}"})"},
            Row{"last of two events counts",
                R"({"hook_event_name":"PermissionRequest","hook_event_name":"x","tool_name":"B","tool_input":{}})"},
            Row{"lone surrogate",
                R"({"hook_event_name":"PermissionRequest","tool_name":"\ud800","tool_input":{}})"},
            Row{"no UTF-8", "{\"hook_event_name\":\"PermissionRequest\",\"tool_name\":\"\xFF\","
                            "\"tool_input\":{}}"},
        })
        EXPECT_FALSE(parseHookInput(row.input, "quillmoss", now)) << row.name;
}

TEST(HookMessage, takesOnlyStringsForSessionAndFolder)
{
    const auto request = parseHookInput(
        R"({"hook_event_name":"PermissionRequest","tool_name":"B","tool_input":{},"session_id":7,"cwd":["/"]})",
        "quillmoss", now);
    ASSERT_TRUE(request);
    EXPECT_EQ(request->sessionID, "");
    EXPECT_EQ(request->cwd, "");
}

// A value whose pretty text is hundreds of times its size must not be written out first.
TEST(HookMessage, refusesAnInputWhosePrettyTextCannotBeSent)
{
    constexpr std::size_t depth = 500;
    std::string zeros = "0";
    for (std::size_t i = 0; i < 50'000; ++i)
        zeros += ",0";
    const auto input =
        R"({"hook_event_name":"PermissionRequest","tool_name":"B","tool_input":{"a":)"
        + std::string(depth, '[') + zeros + std::string(depth, ']') + "}}";
    EXPECT_FALSE(parseHookInput(input, "quillmoss", now));
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
