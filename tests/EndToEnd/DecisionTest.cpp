// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "EndToEnd/NotchOnDesktop.h"

namespace notch {
namespace {

using DecisionTest = NotchOnDesktop;

TEST_F(DecisionTest, ofTwoRequestsTheOneOnShowIsAnsweredAndNotByAClickRightAfterSwitching)
{
    const auto first = ask();
    ASSERT_TRUE(appears(allow));
    const auto second = ask();
    ASSERT_TRUE(appears("待确认 1 / 2"));
    const auto next = settled("下一条请求");
    const auto button = armed();
    // One after the other in the server's queue: the guard delay has only begun.
    other_.clickAt(next.x, next.y);
    other_.clickAt(button.x, button.y);
    EXPECT_TRUE(appears("待确认 2 / 2"));
    armed();
    EXPECT_TRUE(appears("待确认 2 / 2")) << "a request was decided by a stray click";
    click(allow);
    expectAnswer(*second, "allow");
    click(deny);
    expectAnswer(*first, "deny");
}

TEST_F(DecisionTest, aReaderHearsEachRequestItsArmingAndItsEndOnce)
{
    notch_.announcement();
    const auto hook = ask();
    EXPECT_THAT(notch_.announcement().value_or(""),
        testing::MatchesRegex("执行终端命令。rm -rf ./old。(50|49) 秒"));
    EXPECT_EQ(notch_.announcement(), "可以选择");
    EXPECT_EQ(settled("QuillMoss Notch").role, AccessibleControl::Role::dialog);
    click(deny);
    EXPECT_EQ(notch_.announcement(), "已发送拒绝。仅作用于刚才的请求，不影响后续权限");
}

TEST_F(DecisionTest, aKilledHookTakesItsRequestAway)
{
    const auto hook = ask();
    armed();
    hook->kill(SIGKILL);
    EXPECT_TRUE(disappears(allow));
    EXPECT_TRUE(appears("请在原窗口核对"));
}

TEST_F(DecisionTest, aDemonstrationIsDecidedLikeARequestAndReachesNobody)
{
    startResident({"--demo"});
    click(allow);
    EXPECT_TRUE(appears("已体验允许本次"));
}

} // namespace
} // namespace notch
