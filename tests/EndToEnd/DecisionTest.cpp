// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "EndToEnd/NotchOnDesktop.h"

namespace notch {
namespace {

using DecisionTest = NotchOnDesktop;

TEST_F(DecisionTest, aClickOnTheArmedButtonIsTheHooksAnswer)
{
    auto first = ask();
    click(allow);
    EXPECT_TRUE(isAnswer(first->finish(), "allow"));
    auto second = ask();
    click(deny);
    EXPECT_TRUE(isAnswer(second->finish(), "deny"));
}

TEST_F(DecisionTest, aClickRightAfterSwitchingDecidesNothing)
{
    const auto first = ask("echo 1");
    const auto second = ask("echo 2");
    ASSERT_TRUE(appears("待确认 1 / 2"));
    const auto button = armed();
    const auto next = notch_->waitFor(nextRequest);
    ASSERT_TRUE(next);
    // One after the other in the server's queue: the guard delay has only begun.
    other_->clickAt(next->x, next->y);
    other_->clickAt(button.x, button.y);
    EXPECT_TRUE(appears("待确认 2 / 2"));
    armed();
    EXPECT_TRUE(appears("待确认 2 / 2")) << "a request was decided by a stray click";
}

TEST_F(DecisionTest, ofTwoRequestsOnlyTheOneOnShowIsAnswered)
{
    auto first = ask("echo 1");
    armed();
    auto second = ask("echo 2");
    click(nextRequest);
    ASSERT_TRUE(appears("待确认 2 / 2"));
    click(allow);
    EXPECT_TRUE(isAnswer(second->finish(), "allow"));
    click(deny);
    EXPECT_TRUE(isAnswer(first->finish(), "deny"));
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
    EXPECT_TRUE(appears("没有执行命令，也没有修改权限"));
}

} // namespace
} // namespace notch
