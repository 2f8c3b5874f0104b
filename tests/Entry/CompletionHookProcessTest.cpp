// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "TurnEnd/CompletionServer.h"
#include "support/ChildProcess.h"
#include "support/CompletionEvents.h"
#include "support/PrivateBridgeEnvironment.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

using Arguments = std::vector<std::string>;

// A real hook process and a real server of the resident application's kind.
TEST(CompletionHookProcess, tellsTheServerForItsOwnListOnlyAndSaysNothing)
{
    if (!PrivateBridge::reason.empty())
        GTEST_SKIP() << PrivateBridge::reason;
    Trace trace;
    CompletionServer server;
    ASSERT_FALSE(server.start(printingTo(trace)));
    const auto run = [](const Arguments& arguments, const std::string& session) {
        EXPECT_EQ(runProgram(PROGRAM_PATH, arguments,
                      R"({"hook_event_name":"FinalStop","session_id":")" + session + "\"}"),
            (ChildProcess::Ending{0, "", ""}))
            << testing::PrintToString(arguments);
    };
    const std::string flag = "--completion-hook";
    const std::string marker = "quillmoss-notch-completion-v1";
    for (const auto& other : std::vector<Arguments>{
             {flag},
             {flag, "--source", "quillmoss"},
             {flag, "--source", "quillmossAI", "--owner-marker", marker},
             {flag, "--source", "quillmoss", "--owner-marker", "quillmoss-notch-v1"},
             {flag, "--owner-marker", marker, "--source", "quillmoss"},
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
