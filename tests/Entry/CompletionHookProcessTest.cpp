// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Foundation/UUID.h"
#include "TurnEnd/CompletionHookClient.h"
#include "TurnEnd/CompletionServer.h"
#include "support/ChildProcess.h"
#include "support/EventTrace.h"
#include "support/PrivateBridgeEnvironment.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

const std::vector<std::string> ownList{"--completion-hook", "--source", "quillmoss",
    "--owner-marker", "quillmoss-notch-completion-v1"};
const std::string input =
    R"({"hook_event_name":"FinalStop","session_id":"s","final_stop_reason":"completed"})";

void expectSilence(const ChildProcess::Ending& ending, const std::string& name)
{
    EXPECT_EQ(ending.status, 0) << name;
    EXPECT_EQ(ending.output, "") << name;
    EXPECT_EQ(ending.errors, "") << name;
}

// A real hook process and a real server of the resident application's kind.
class CompletionHookProcess : public testing::Test {
protected:
    void SetUp() override
    {
        if (!PrivateBridge::reason.empty())
            GTEST_SKIP() << PrivateBridge::reason;
        ASSERT_FALSE(server.start(trace.callback()));
    }

    // Shows that nothing came before it.
    void expectOnlyTheNext()
    {
        EXPECT_TRUE(CompletionHookClient().send(
            {.id = UUID::random().text(), .sessionID = "next", .observedAt = Date::now()}));
        EXPECT_EQ(trace.next(), "started session=next");
    }

    EventTrace trace;
    CompletionServer server;
};

TEST_F(CompletionHookProcess, tellsTheServerAndSaysNothing)
{
    expectSilence(runProgram(PROGRAM_PATH, ownList, input), "end");
    EXPECT_EQ(trace.next(), "ended session=s reason=completed");
    server.stop();
    expectSilence(runProgram(PROGRAM_PATH, ownList, input), "no server");
}

TEST_F(CompletionHookProcess, doesNothingForAnyOtherList)
{
    for (const auto& list : std::vector<std::vector<std::string>>{
             {"--completion-hook"},
             {"--completion-hook", "--source", "quillmoss"},
             {"--completion-hook", "--source", "quillmossAI", "--owner-marker",
                 "quillmoss-notch-completion-v1"},
             {"--completion-hook", "--source", "quillmoss", "--owner-marker", "quillmoss-notch-v1"},
             {"--completion-hook", "--owner-marker", "quillmoss-notch-completion-v1", "--source",
                 "quillmoss"},
             {"--completion-hook", "--source", "quillmoss", "--owner-marker",
                 "quillmoss-notch-completion-v1", "--apply"},
             {"--hook", "--completion-hook", "--source", "quillmoss", "--owner-marker",
                 "quillmoss-notch-completion-v1"},
         })
        expectSilence(runProgram(PROGRAM_PATH, list, input), testing::PrintToString(list));
    expectOnlyTheNext();
}

TEST_F(CompletionHookProcess, endsInTimeWhenTheHostHoldsItsInputOpen)
{
    const auto start = Uptime::now();
    ChildProcess hook(PROGRAM_PATH, ownList);
    hook.write(input);
    EXPECT_EQ(hook.readLine(), ""); // The end of its output is its end.
    EXPECT_GE(Uptime::now() - start, Seconds{0.3});
    EXPECT_LT(Uptime::now() - start, Seconds{5});
    expectSilence(hook.finish(), "held open");
    expectOnlyTheNext();
}

} // namespace
} // namespace notch
