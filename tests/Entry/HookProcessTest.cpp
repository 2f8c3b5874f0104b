// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/ApprovalServer.h"
#include "Bridge/HookMessage.h"
#include "TurnEnd/CompletionServer.h"
#include "support/ChildProcess.h"
#include "support/CompletionEvents.h"
#include "support/PrivateBridge.h"
#include "support/TemporaryDirectory.h"
#include "support/Trace.h"

#include <csignal>
#include <gtest/gtest.h>

namespace notch {
namespace {

using namespace std::string_literals;

using Ending = ChildProcess::Ending;
using Arguments = std::vector<std::string>;

// Before main(), so before any thread is started.
const std::string whyNoBridge = enterPrivateBridge();

constexpr std::size_t mebibyte = 1 << 20;

std::string inputOf(const std::string& toolInputMember)
{
    return R"({"hook_event_name":"PermissionRequest","tool_name":"Bash","tool_input":{"a":)"
         + toolInputMember + "}}";
}

// What half a million values, the most that fit into the largest input, need in memory. The
// sanitizers' own memory is no concern of the program.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr long mostKilobytes = 1024L * 1024;
constexpr bool usualStack = false;
#else
constexpr long mostKilobytes = 56L * 1024;
constexpr bool usualStack = true;
#endif

// A real hook process and a real server of the resident application's kind, that decides
// at once.
class HookProcess : public testing::Test {
protected:
    void SetUp() override
    {
        if (!whyNoBridge.empty())
            GTEST_SKIP() << whyNoBridge;
        ASSERT_FALSE(server.start({.onRequest = [this](const ApprovalRequest& request) {
            trace.add(request.source + " asks");
            server.decide(request.id, decision);
        }}));
    }

    Trace trace;
    Decision decision = Decision::passthrough;
    ApprovalServer server;
};

TEST_F(HookProcess, takesTheSourceAfterItsFlag)
{
    for (const auto& [arguments, source] : std::vector<std::pair<Arguments, std::string>>{
             {{"--hook"}, "quillmoss"},
             {{"--hook", "--source"}, "quillmoss"},
             {{"--source", "汉", "--hook", "--source", "b"}, "汉"},
             {{"--hook", "--source", "\xE6\xB1 not UTF-8"}, "\uFFFD not UTF-8"},
             {{"--hook", "--source", ""}, ""},
             {{"--source", "--hook"}, "--hook"},
             {{"--hook", "--source", "quillmossAI", "--owner-marker", "quillmoss-notch-v1"},
                 "quillmossAI"},
         }) {
        EXPECT_EQ(runProgram(PROGRAM_PATH, arguments, inputOf("0")), (Ending{0, "", ""}));
        EXPECT_EQ(trace.next(), source + " asks");
    }
}

// The shell sets the limits and the output of the process that becomes the hook.
TEST_F(HookProcess, worksWithALittleStackAndWhenItsLineIsLost)
{
    decision = Decision::allow;
    const auto deep = inputOf(std::string(509, '[') + std::string(509, ']'));
    for (const std::string setting : {usualStack ? "ulimit -s 64" : ":",
             "ulimit -f 0; exec >\"$1\"", // No room in the file.
             "mkfifo \"$1\"; exec 3<>\"$1\" >\"$1\" 3>&-"}) { // Nobody reads the pipe.
        const TemporaryDirectory directory;
        const auto ending = runProgram("/bin/sh",
            {"-c", setting + "; exec \"$0\" --hook", PROGRAM_PATH, directory / "line"}, deep);
        EXPECT_TRUE(ending.status == 0 && ending.errors.empty()) << setting;
        EXPECT_EQ(trace.next(), "quillmoss asks");
    }
}

// The pretty text and the quoting around it need their part of the same limit on the socket.
TEST_F(HookProcess, asksForTheLargestInputAndNothingBeyond)
{
    decision = Decision::allow;
    auto largest = inputOf('"' + std::string(mebibyte - 700, 'x') + '"');
    largest.resize(mebibyte, ' ');
    EXPECT_EQ(runProgram(PROGRAM_PATH, {"--hook"}, largest + ' '), (Ending{0, "", ""}));
    EXPECT_TRUE(trace.empty());
    EXPECT_EQ(runProgram(PROGRAM_PATH, {"--hook"}, largest),
        (Ending{0, hookOutput("PermissionRequest", Decision::allow), ""}));
}

// Whatever comes in, the host sees nothing but status 0, and the memory stays a small multiple,
// also for a value whose pretty text would be hundreds of times as long.
TEST_F(HookProcess, endsInSilenceForHostileInput)
{
    struct Row {
        std::string before;
        std::string part; // Repeated until a mebibyte is nearly full.
        std::string after;
    };
    for (const auto& row : {Row{"", "[", ""}, Row{"", "{\"\":", ""}, Row{"", "\0"s, ""},
             Row{"[0", ",0", "]"}, Row{"[0", ",\"\"", "]"}, Row{"[0", ",[]", "]"},
             Row{"[0", ",{}", "]"}, Row{"[0", ",{\"\":0}", "]"},
             Row{std::string(400, '[') + "0", ",0", std::string(400, ']')},
             Row{"{\"\":0", ",\"\":0", "}"}, Row{"1", "9", ""},
             Row{"\"\xFF\xC0\x80", "\xED\xA0\x80", "\""}, Row{"\"", "\\ud800", "\""},
             Row{"\"", "\\u0001", "\""}, Row{"\"", "\\\"", "\""}}) {
        auto value = row.before;
        while (value.size() < mebibyte - 1000)
            value += row.part;
        ChildProcess hook(PROGRAM_PATH, {"--hook"});
        hook.write(inputOf(value + row.after));
        EXPECT_EQ(hook.finish(), (Ending{0, "", ""})) << row.before.front() << row.part;
        EXPECT_LT(hook.peakMemory(), mostKilobytes) << row.before.front() << row.part;
    }
}

TEST(CompletionHookProcess, tellsTheServerForItsOwnListOnlyAndSaysNothing)
{
    if (!whyNoBridge.empty())
        GTEST_SKIP() << whyNoBridge;
    Trace trace;
    CompletionServer server;
    ASSERT_FALSE(server.start(printingTo(trace)));
    const auto run = [](const Arguments& arguments, const std::string& session) {
        const auto input = R"({"hook_event_name":"FinalStop","session_id":")" + session + "\"}";
        EXPECT_EQ(runProgram(PROGRAM_PATH, arguments, input), (Ending{0, "", ""}))
            << testing::PrintToString(arguments);
    };
    const std::string flag = "--completion-hook";
    const std::string marker = "quillmoss-notch-completion-v1";
    for (const auto& other : std::vector<Arguments>{
             {flag},
             {flag, "--source", "quillmossAI", "--owner-marker", marker},
             {flag, "--source", "quillmoss", "--owner-marker", "quillmoss-notch-v1"},
             {flag, "--source", "quillmoss", "--owner-marker", marker, "--apply"},
             {"--hook", flag, "--source", "quillmoss", "--owner-marker", marker},
         })
        run(other, "other");
    const Arguments own{flag, "--source", "quillmoss", "--owner-marker", marker};
    run(own, "own");
    EXPECT_EQ(trace.next(), "ended session=own reason=unknown");
    server.stop();
    run(own, "nobody-listens");
}

} // namespace
} // namespace notch
