// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/ApprovalServer.h"
#include "support/ChildProcess.h"
#include "support/PrivateBridgeEnvironment.h"
#include "support/Trace.h"

#include <csignal>
#include <functional>
#include <gtest/gtest.h>

namespace notch {
namespace {

using namespace std::string_view_literals;

using Ending = ChildProcess::Ending;

constexpr std::size_t mebibyte = 1 << 20;

std::string inputOf(std::string_view toolInputMember)
{
    return R"({"hook_event_name":"PermissionRequest","tool_name":"Bash","tool_input":{"a":)"
         + std::string(toolInputMember) + "}}";
}

// What half a million values, the most that fit into the largest input, need in memory. The
// sanitizers' own memory is no concern of the program.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr long mostKilobytes = 1024L * 1024;
#else
constexpr long mostKilobytes = 56L * 1024;
#endif

// A real hook process and a real server of the resident application's kind, at which somebody
// decides at once.
class HookProcess : public testing::Test {
protected:
    void SetUp() override
    {
        if (!PrivateBridge::reason.empty())
            GTEST_SKIP() << PrivateBridge::reason;
        ASSERT_FALSE(server.start({.onRequest = [this](const ApprovalRequest& request) {
            trace.add(request.source + " asks");
            decide(request.id);
        }}));
    }

    Trace trace;
    std::function<void(const std::string& id)> decide = [](const auto&) {};
    ApprovalServer server;
};

TEST_F(HookProcess, printsWhatAPersonDecided)
{
    decide = [this](const auto& id) { server.decide(id, Decision::deny); };
    const auto ending = runProgram(PROGRAM_PATH,
        {"--hook", "--source", "quillmossAI", "--owner-marker", "quillmoss-notch-v1"},
        inputOf("0"));
    EXPECT_EQ(trace.next(), "quillmossAI asks");
    EXPECT_EQ(
        ending, (Ending{0,
                    R"({"decision":"block","hookSpecificOutput":{"decision":{"behavior":"deny"},)"
                    R"("hookEventName":"PermissionRequest","permissionDecision":"deny"}})"
                    "\n",
                    ""}));
}

TEST_F(HookProcess, takesTheSourceFromBehindItsFlag)
{
    decide = [this](const auto& id) { server.decide(id, Decision::passthrough); };
    using Arguments = std::vector<std::string>;
    for (const auto& [arguments, source] : std::vector<std::pair<Arguments, std::string>>{
             {{"--hook"}, "quillmoss"},
             {{"--hook", "--source"}, "quillmoss"},
             {{"--source", "汉", "--hook", "--source", "b"}, "汉"},
             {{"--hook", "--source", ""}, ""},
             {{"--source", "--hook"}, "--hook"},
         }) {
        EXPECT_EQ(runProgram(PROGRAM_PATH, arguments, inputOf("0")), (Ending{0, "", ""}));
        EXPECT_EQ(trace.next(), source + " asks");
    }
}

TEST_F(HookProcess, endsWithStatusZeroWhenNobodyReadsItsLine)
{
    decide = [this](const auto& id) { server.decide(id, Decision::allow); };
    ChildProcess hook(PROGRAM_PATH, {"--hook"});
    hook.closeOutput();
    hook.write(inputOf("0"));
    EXPECT_EQ(hook.finish(), (Ending{0, "", ""}));
    EXPECT_EQ(trace.next(), "quillmoss asks");
}

TEST_F(HookProcess, waitsAsleepForAnInputThatIsNotClosed)
{
    ChildProcess hook(PROGRAM_PATH, {"--hook"});
    hook.write(inputOf("0"));
    EXPECT_TRUE(hook.fallsAsleep());
    hook.kill(SIGKILL);
    server.stop();
    EXPECT_TRUE(trace.empty());
}

// The pretty text and the quoting around it need their part of the same limit on the socket.
TEST_F(HookProcess, asksForTheLargestInputAndNothingBeyond)
{
    decide = [this](const auto& id) { server.decide(id, Decision::allow); };
    auto largest = inputOf('"' + std::string(mebibyte - 700, 'x') + '"');
    largest.resize(mebibyte, ' ');
    EXPECT_EQ(runProgram(PROGRAM_PATH, {"--hook"}, largest + ' '), (Ending{0, "", ""}));
    EXPECT_TRUE(trace.empty());
    EXPECT_NE(runProgram(PROGRAM_PATH, {"--hook"}, largest).output, "");
}

// Whatever comes in, the host sees nothing but status 0, and the memory stays a small multiple.
TEST_F(HookProcess, endsInSilenceForHostileInput)
{
    struct Row {
        std::string_view before;
        std::string_view part; // Repeated until a mebibyte is nearly full.
        std::string_view after;
    };
    decide = [this](const auto& id) { server.decide(id, Decision::passthrough); };
    for (const auto& row :
        {Row{"", "[", ""}, Row{"", "{\"\":", ""}, Row{"", "\0"sv, ""}, Row{"[0", ",0", "]"},
            Row{"[0", ",\"\"", "]"}, Row{"[0", ",[]", "]"}, Row{"[0", ",{}", "]"},
            Row{"[0", ",{\"\":0}", "]"}, Row{"[[[[[[[[[[[[[[[[[[[[0", ",0", "]]]]]]]]]]]]]]]]]]]]"},
            Row{"{\"\":0", ",\"\":0", "}"}, Row{"1", "9", ""},
            Row{"\"\xFF\xC0\x80", "\xED\xA0\x80", "\""}, Row{"\"", "\\ud800", "\""},
            Row{"\"", "\\u0001", "\""}, Row{"\"", "\\\"", "\""}}) {
        std::string value(row.before);
        while (value.size() < mebibyte - 1000)
            value += row.part;
        ChildProcess hook(PROGRAM_PATH, {"--hook"});
        hook.write(inputOf(value + std::string(row.after)));
        EXPECT_EQ(hook.finish(), (Ending{0, "", ""})) << row.before << row.part;
        EXPECT_LT(hook.peakMemory(), mostKilobytes) << row.before << row.part;
    }
}

} // namespace
} // namespace notch
