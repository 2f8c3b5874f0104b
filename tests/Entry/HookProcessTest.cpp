// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/ApprovalServer.h"
#include "support/ChildProcess.h"
#include "support/PrivateBridgeEnvironment.h"

#include <csignal>
#include <future>
#include <gtest/gtest.h>

namespace notch {
namespace {

using namespace std::string_view_literals;

constexpr std::chrono::seconds ample{30};
constexpr std::string_view head =
    R"({"hook_event_name":"PermissionRequest","tool_name":"Bash","tool_input":{"command":")";
constexpr std::string_view tail = "\"}}";

// The input of the host, exactly this long.
std::string inputOf(std::size_t size)
{
    return std::string(head) + std::string(size - head.size() - tail.size(), 'x')
         + std::string(tail);
}

std::string asToolInput(const std::string& value)
{
    return R"({"hook_event_name":"PermissionRequest","tool_name":"Bash","tool_input":{"a":)" + value
         + "}}";
}

std::string repeated(std::string_view part)
{
    constexpr std::size_t nearlyMebibyte = (1 << 20) - 1000;
    std::string text;
    while (!part.empty() && text.size() + part.size() <= nearlyMebibyte)
        text += part;
    return text;
}

// What half a million values, the most that fit into the largest input, need in memory. The
// sanitizers' own memory is no concern of the program.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr long mostKilobytes = 1024L * 1024;
#else
constexpr long mostKilobytes = 56L * 1024;
#endif

// A real hook process and a real server of the resident application's kind.
class HookProcess : public testing::Test {
protected:
    void SetUp() override
    {
        if (!PrivateBridge::reason.empty())
            GTEST_SKIP() << PrivateBridge::reason;
        ASSERT_FALSE(server.start({
            .onRequest = [this](ApprovalRequest request) { asked.set_value(std::move(request)); },
            .onRemoval = [this](const std::string&) { removed.set_value(); },
        }));
    }

    ApprovalRequest awaitRequest()
    {
        auto future = asked.get_future();
        EXPECT_EQ(future.wait_for(ample), std::future_status::ready);
        return future.get();
    }
    bool isRemoved() { return removed.get_future().wait_for(ample) == std::future_status::ready; }

    std::promise<ApprovalRequest> asked;
    std::promise<void> removed;
    ApprovalServer server;
};

TEST_F(HookProcess, printsWhatAPersonDecided)
{
    ChildProcess hook(PROGRAM_PATH,
        {"--hook", "--source", "quillmossAI", "--owner-marker", "quillmoss-notch-v1"});
    hook.write(inputOf(200));
    hook.closeInput();
    const auto request = awaitRequest();
    EXPECT_EQ(request.source, "quillmossAI");
    ASSERT_TRUE(server.decide(request.id, Decision::deny));
    const auto ending = hook.finish();
    EXPECT_EQ(ending.status, 0);
    EXPECT_EQ(ending.output,
        R"({"decision":"block","hookSpecificOutput":{"decision":{"behavior":"deny"},)"
        R"("hookEventName":"PermissionRequest","permissionDecision":"deny"}})"
        "\n");
    EXPECT_EQ(ending.errors, "");
}

TEST_F(HookProcess, takesTheSourceFromBehindItsFlag)
{
    struct Row {
        std::vector<std::string> arguments;
        std::string source;
    };
    for (const auto& row : {Row{{"--hook"}, "quillmoss"}, Row{{"--hook", "--source"}, "quillmoss"},
             Row{{"--source", "汉", "--hook", "--source", "b"}, "汉"},
             Row{{"--hook", "--source", ""}, ""}, Row{{"--source", "--hook"}, "--hook"}}) {
        asked = {};
        removed = {};
        ChildProcess hook(PROGRAM_PATH, row.arguments);
        hook.write(inputOf(200));
        hook.closeInput();
        const auto request = awaitRequest();
        EXPECT_EQ(request.source, row.source);
        ASSERT_TRUE(server.decide(request.id, Decision::passthrough));
        EXPECT_EQ(hook.finish().output, "");
        EXPECT_TRUE(isRemoved());
    }
}

TEST_F(HookProcess, isForgottenWhenItIsKilled)
{
    ChildProcess hook(PROGRAM_PATH, {"--hook"});
    hook.write(inputOf(200));
    hook.closeInput();
    const auto request = awaitRequest();
    hook.kill(SIGKILL);
    EXPECT_TRUE(isRemoved());
    EXPECT_FALSE(server.decide(request.id, Decision::allow));
}

TEST_F(HookProcess, endsInSilenceWhenTheServerStops)
{
    ChildProcess hook(PROGRAM_PATH, {"--hook"});
    hook.write(inputOf(200));
    hook.closeInput();
    awaitRequest();
    server.stop();
    const auto ending = hook.finish();
    EXPECT_EQ(ending.status, 0);
    EXPECT_EQ(ending.output + ending.errors, "");
}

TEST_F(HookProcess, endsWithStatusZeroWhenNobodyReadsItsLine)
{
    ChildProcess hook(PROGRAM_PATH, {"--hook"});
    hook.write(inputOf(200));
    hook.closeInput();
    const auto request = awaitRequest();
    hook.closeOutput();
    ASSERT_TRUE(server.decide(request.id, Decision::allow));
    EXPECT_EQ(hook.finish().status, 0);
}

TEST_F(HookProcess, waitsAsleepForAnInputThatIsNotClosed)
{
    ChildProcess hook(PROGRAM_PATH, {"--hook"});
    hook.write(inputOf(200));
    EXPECT_TRUE(hook.fallsAsleep());
    hook.kill(SIGKILL);
    server.stop();
    EXPECT_EQ(asked.get_future().wait_for(std::chrono::seconds(0)), std::future_status::timeout);
}

struct HostileInput {
    const char* name;
    std::string_view before;
    std::string_view part; // Repeated until a mebibyte is nearly full.
    std::string_view after;
};

class HostileHookProcess : public HookProcess, public testing::WithParamInterface<HostileInput> { };

// Whatever comes in, the host sees nothing but status 0, and the memory stays a small multiple.
TEST_P(HostileHookProcess, endsInSilence)
{
    server.stop();
    ASSERT_FALSE(server.start({.onRequest = [this](const ApprovalRequest& request) {
        server.decide(request.id, Decision::passthrough);
    }}));
    const auto& row = GetParam();
    const auto value = std::string(row.before) + repeated(row.part) + std::string(row.after);
    const auto ending = runProgram(PROGRAM_PATH, {"--hook"}, asToolInput(value));
    EXPECT_EQ(ending.status, 0);
    EXPECT_EQ(ending.output + ending.errors, "");
    EXPECT_LT(ending.peakKilobytes, mostKilobytes);
}

INSTANTIATE_TEST_SUITE_P(Rows, HostileHookProcess,
    testing::Values(HostileInput{"nothing", "", "", ""}, HostileInput{"openBrackets", "", "[", ""},
        HostileInput{"openObjects", "", "{\"\":", ""}, HostileInput{"nulBytes", "", "\0"sv, ""},
        HostileInput{"zeros", "[0", ",0", "]"}, HostileInput{"emptyStrings", "[0", ",\"\"", "]"},
        HostileInput{"emptyArrays", "[0", ",[]", "]"},
        HostileInput{"emptyObjects", "[0", ",{}", "]"},
        HostileInput{"smallObjects", "[0", ",{\"\":0}", "]"},
        HostileInput{"zerosFarDown", "[[[[[[[[[[[[[[[[[[[[0", ",0", "]]]]]]]]]]]]]]]]]]]]"},
        HostileInput{"sameKeyAgainAndAgain", "{\"\":0", ",\"\":0", "}"},
        HostileInput{"oneNumber", "1", "9", ""},
        HostileInput{"noUtf8", "\"\xFF\xC0\x80", "\xED\xA0\x80", "\""},
        HostileInput{"loneSurrogates", "\"", "\\ud800", "\""},
        HostileInput{"controlCharacters", "\"", "\\u0001", "\""},
        HostileInput{"quotationMarks", "\"", "\\\"", "\""}),
    [](const auto& row) { return row.param.name; });

TEST_F(HookProcess, asksForTheLargestInput)
{
    ChildProcess hook(PROGRAM_PATH, {"--hook"});
    // The pretty text and the quoting around it need their part of the same limit on the socket.
    const auto input = inputOf((1 << 20) - 600);
    hook.write(input + std::string((1 << 20) - input.size(), ' '));
    hook.closeInput();
    const auto request = awaitRequest();
    EXPECT_GT(request.toolInputJSON.size(), 1'000'000U);
    ASSERT_TRUE(server.decide(request.id, Decision::allow));
    EXPECT_NE(hook.finish().output, "");
}

} // namespace
} // namespace notch
