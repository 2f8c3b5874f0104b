// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "EndToEnd/NotchOnDesktop.h"
#include "Platform/RunningApplications/RunningApplications.h"

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace notch {
namespace {

// A host with a window of its own, and another program that the person works in.
class TurnEndTest : public NotchOnDesktop {
protected:
    static constexpr const char* title = "QuillMoss 本轮已结束";
    static constexpr const char* open = "打开 QuillMoss";
    static constexpr const char* noted = "知道了";

    void SetUp() override
    {
        NotchOnDesktop::SetUp();
        if (IsSkipped())
            return;
        startResident({"--enable-completion-reminders"});
        host_ = other_.openWindow("quillmoss");
        ASSERT_TRUE(hasFocus(host_));
    }
    // The person turns to another program.
    void work()
    {
        editor_ = ::fork(); // This process is the host.
        if (editor_ == 0) {
            OtherProgram editor;
            editor.openWindow("editor");
            ::pause();
        }
        const RunningApplications editors({"editor"});
        ASSERT_TRUE(waitUntil([&] {
            const auto running = editors.running();
            return !running.empty() && running.front().isActive;
        }));
    }
    void TearDown() override
    {
        if (editor_ > 0) {
            ::kill(editor_, SIGKILL);
            ::waitpid(editor_, nullptr, 0);
        }
    }
    bool hasFocus(OtherProgram::Window window)
    {
        return waitUntil([&] { return other_.focus() == window; });
    }
    // As the host tells of it, through the hook.
    static void tell(const std::string& event)
    {
        ChildProcess hook(PROGRAM_PATH, {"--completion-hook", "--source", "quillmoss",
                                            "--owner-marker", "quillmoss-notch-completion-v1"});
        hook.write(R"({"hook_event_name":)" + event + '}');
        hook.closeInput();
        expectSilence(hook.finish());
    }
    static void turn(const std::string& generation = "1")
    {
        const auto named = R"(,"session_id":"s","generation_id":")" + generation + '"';
        tell(R"("UserPromptSubmit")" + named);
        tell(R"("FinalStop","final_stop_reason":"completed")" + named);
    }

    OtherProgram::Window host_ = 0;
    pid_t editor_ = 0;
};

TEST_F(TurnEndTest, aTurnThatEndsBehindOpensTheNotchAndItsButtonBringsTheHostToTheFront)
{
    work();
    turn();
    ASSERT_TRUE(appears(title));
    EXPECT_FALSE(notch_.showing(open)->isEnabled) << "armed at once";
    click(open);
    EXPECT_TRUE(hasFocus(host_));
    EXPECT_TRUE(disappears(title));
}

TEST_F(TurnEndTest, takingNoteWithdrawsItAndLeavesTheHostWhereItIs)
{
    work();
    turn();
    click(noted);
    EXPECT_TRUE(appears(openNotch));
    EXPECT_NE(other_.focus(), host_);
}

TEST_F(TurnEndTest, aRequestTakesTheNotchAndTheReminderComesBackAfterItsReceipt)
{
    work();
    turn();
    ASSERT_TRUE(appears(title));
    const auto hook = ask();
    ASSERT_TRUE(disappears(title));
    click(deny);
    expectAnswer(*hook, "deny");
    EXPECT_TRUE(appears(title));
    click(open);
    EXPECT_TRUE(hasFocus(host_));
}

TEST_F(TurnEndTest, aTurnThatEndsInFrontIsNeverRemindedOf)
{
    turn("1");
    work();
    turn("2");
    click(noted);
    settled(openNotch); // An older reminder would have come first, and this one now.
}

} // namespace
} // namespace notch
