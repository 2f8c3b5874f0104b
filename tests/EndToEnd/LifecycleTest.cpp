// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "EndToEnd/NotchOnDesktop.h"

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

namespace notch {
namespace {

class LifecycleTest : public NotchOnDesktop {
protected:
    // As a person quits: from the settings window.
    void quit()
    {
        click("接入与交互设置");
        click("退出 QuillMoss Notch");
    }
};

TEST_F(LifecycleTest, aKilledResidentAnswersNobodyAndTheNextStartServes)
{
    auto hook = ask();
    armed();
    resident().kill(SIGKILL);
    EXPECT_TRUE(isWithoutAnswer(hook->finish()));
    startResident();
    auto next = ask();
    click(allow);
    EXPECT_TRUE(isAnswer(next->finish(), "allow"));
}

TEST_F(LifecycleTest, aSecondCopyEndsAtOnceAndLeavesTheFirstAlone)
{
    EXPECT_TRUE(isWithoutAnswer(runProgram(PROGRAM_PATH)));
    auto hook = ask();
    click(allow);
    EXPECT_TRUE(isAnswer(hook->finish(), "allow"));
}

TEST_F(LifecycleTest, aSignalEndsAnIdleResident)
{
    for (const int signal : {SIGTERM, SIGINT}) {
        startResident();
        resident().kill(signal);
        EXPECT_EQ(resident().finish().status, 0) << signal;
    }
}

TEST_F(LifecycleTest, aSignalIsRefusedWhileARequestWaitsAndTheNotchOpens)
{
    auto hook = ask();
    armed();
    click(closeNotch);
    ASSERT_TRUE(disappears(allow));
    resident().kill(SIGTERM);
    click(deny);
    EXPECT_TRUE(isAnswer(hook->finish(), "deny"));
}

TEST_F(LifecycleTest, aSecondSignalSoonAfterEndsAndAnswersNobody)
{
    auto hook = ask();
    armed();
    resident().kill(SIGTERM);
    ASSERT_TRUE(resident().fallsAsleep()); // It has taken the first.
    resident().kill(SIGTERM);
    EXPECT_EQ(resident().finish().status, 0);
    EXPECT_TRUE(isWithoutAnswer(hook->finish()));
}

TEST_F(LifecycleTest, quittingAsksFirstAndGivesTheRequestsBack)
{
    auto hook = ask();
    armed();
    quit();
    EXPECT_TRUE(appears("还有 1 条请求待确认"));
    EXPECT_TRUE(disappears(allow));
    click("继续查看");
    ASSERT_TRUE(appears(allow));
    click("退出 QuillMoss Notch");
    click("交回 QuillMoss 并退出");
    EXPECT_EQ(resident().finish().status, 0);
    EXPECT_TRUE(isWithoutAnswer(hook->finish()));
}

TEST_F(LifecycleTest, aStartWritesTheSwitchesItWasAskedForAndNoOther)
{
    startResident({"--enable-native-approvals"});
    ASSERT_TRUE(appears("退出 QuillMoss Notch")) << "access is missing: the settings must be shown";
    std::ifstream file(std::string(std::getenv("XDG_CONFIG_HOME")) + "/local.quillmoss.notch.ini");
    const std::string text(std::istreambuf_iterator<char>(file), {});
    EXPECT_EQ(text, "[General]\nnativeApprovalsEnabled=true\n");
}

TEST_F(LifecycleTest, withoutADisplayAStartSaysSoInOneLine)
{
    resident().kill(SIGTERM);
    resident().finish();
    const std::string display = std::getenv("DISPLAY");
    for (const char* const wrong : {"", ":999", "nonsense"}) {
        ::setenv("DISPLAY", wrong, 1);
        const auto ending = runProgram(PROGRAM_PATH);
        EXPECT_EQ(ending.status, 1) << wrong;
        EXPECT_EQ(ending.errors, "QuillMossNotch needs an X11 display (or XWayland), and $DISPLAY "
                                 "names none that can be opened.\n")
            << wrong;
    }
    ::setenv("DISPLAY", display.c_str(), 1);
}

} // namespace
} // namespace notch
