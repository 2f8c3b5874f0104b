// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "EndToEnd/NotchOnDesktop.h"
#include "support/TemporaryDirectory.h"

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

namespace notch {
namespace {

using LifecycleTest = NotchOnDesktop;

TEST_F(LifecycleTest, aKilledResidentAnswersNobodyAndTheNextStartServes)
{
    const auto hook = ask();
    armed();
    resident_->kill(SIGKILL);
    expectSilence(hook->finish());
    startResident();
    const auto next = ask();
    click(allow);
    expectAnswer(*next, "allow");
}

TEST_F(LifecycleTest, aSecondCopyEndsAtOnceAndLeavesTheFirstAlone)
{
    expectSilence(runProgram(PROGRAM_PATH));
    const TemporaryDirectory elsewhere;
    const std::string runtime = std::getenv("XDG_RUNTIME_DIR");
    ::setenv("XDG_RUNTIME_DIR", elsewhere.path().c_str(), 1);
    expectSilence(runProgram(PROGRAM_PATH));
    ::setenv("XDG_RUNTIME_DIR", runtime.c_str(), 1);
    const auto hook = ask();
    click(deny);
    expectAnswer(*hook, "deny");
}

TEST_F(LifecycleTest, aSignalIsRefusedWhileARequestWaitsAndTheNotchOpens)
{
    const auto hook = ask();
    armed();
    click("暂时收起，不改变审批决定");
    ASSERT_TRUE(disappears(allow));
    resident_->kill(SIGTERM);
    click(deny);
    expectAnswer(*hook, "deny");
}

TEST_F(LifecycleTest, aSecondSignalSoonAfterEndsAndAnswersNobody)
{
    const auto hook = ask();
    armed();
    resident_->kill(SIGTERM);
    ASSERT_TRUE(resident_->fallsAsleep()); // It has taken the first.
    resident_->kill(SIGTERM);
    EXPECT_EQ(resident_->finish().status, 0);
    expectSilence(hook->finish());
}

TEST_F(LifecycleTest, quittingAsksFirstAndGivesTheRequestsBack)
{
    const auto hook = ask();
    armed();
    click("接入与交互设置");
    click("退出 QuillMoss Notch");
    EXPECT_TRUE(appears("还有 1 条请求待确认"));
    EXPECT_TRUE(disappears(allow));
    click("继续查看");
    ASSERT_TRUE(appears(allow));
    click("退出 QuillMoss Notch");
    click("交回 QuillMoss 并退出");
    EXPECT_EQ(resident_->finish().status, 0);
    expectSilence(hook->finish());
}

TEST_F(LifecycleTest, theItemOfALateTrayBringsIconifiedSettingsBack)
{
    const auto menuIsOpen = [&] { // White with a separator, which a white screen has not.
        return other_.colourAt(120, 690) == OtherProgram::white
            && other_.colourAt(200, 663) != OtherProgram::white;
    };
    const auto openSettings = [&] { // A reader is told nothing of a menu's entries.
        EXPECT_TRUE(waitUntil([&] { // A click on a menu that is closing opens none.
            other_.clickAt(111, 711);
            for (int look = 0; look < 100 && !menuIsOpen(); ++look)
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
            return menuIsOpen();
        }));
        other_.clickAt(170, 608); // The second entry.
    };
    ASSERT_TRUE(other_.takeTrayItem(100, 700));
    openSettings();
    ASSERT_TRUE(appears("退出 QuillMoss Notch"));
    ASSERT_TRUE(other_.iconifyActiveWindow());
    openSettings();
    EXPECT_EQ(settled("QuillMoss Notch · 接入与交互").role, AccessibleControl::Role::window);
    click("退出 QuillMoss Notch");
    EXPECT_EQ(resident_->finish().status, 0);
}

TEST_F(LifecycleTest, aStartWritesTheSwitchesItWasAskedForAndNoOther)
{
    startResident({"--enable-native-approvals"});
    ASSERT_TRUE(appears("退出 QuillMoss Notch")) << "access is missing: the settings must be shown";
    std::ifstream file(std::string(std::getenv("XDG_CONFIG_HOME")) + "/local.quillmoss.notch.ini");
    const std::string text(std::istreambuf_iterator<char>(file), {});
    EXPECT_EQ(text, "[General]\nnativeApprovalsEnabled=true\n");
}

TEST_F(LifecycleTest, aSignalEndsAnIdleResidentAndWithoutADisplayAStartSaysSoInOneLine)
{
    resident_->kill(SIGINT);
    EXPECT_EQ(resident_->finish().status, 0);
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
