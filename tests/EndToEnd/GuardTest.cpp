// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "EndToEnd/NotchOnDesktop.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <thread>

namespace notch {
namespace {

// A request is on show and armed, and "allow" is where its button was then. Whatever a case clicks
// there must decide nothing; that the request waits still shows in a denial that reaches its hook.
class GuardTest : public NotchOnDesktop {
protected:
    // Longer than a double click, shorter than the guard delay.
    static constexpr std::uint32_t tooSoon = 420;
    static constexpr std::uint32_t inABurst = 120;
    static constexpr std::uint32_t longEnough = 600;

    void SetUp() override
    {
        NotchOnDesktop::SetUp();
        if (IsSkipped())
            return;
        hook_ = ask();
        place_ = armed();
    }
    void clickAllow(std::uint32_t after)
    {
        other_.moveTo(place_.x, place_.y);
        other_.pause(after);
        other_.press();
        other_.release();
    }
    static void lock(const char* on)
    {
        const auto tell = std::string("dbus-send / org.gnome.ScreenSaver.ActiveChanged boolean:");
        ASSERT_EQ(std::system((tell + on).c_str()), 0);
    }
    void expectStillWaiting()
    {
        // A click sooner after the last one would count as the second half of a double click.
        std::this_thread::sleep_for(std::chrono::milliseconds(tooSoon));
        click(deny);
        expectAnswer(*hook_, "deny");
    }

    std::unique_ptr<ChildProcess> hook_;
    AccessibleControl place_;
};

TEST_F(GuardTest, aClickThatWaitedWhileTheProgramStoodStillWasMadeTooSoon)
{
    click("暂时收起，不改变审批决定");
    ASSERT_TRUE(disappears(allow));
    click("1 条待确认请求");
    ASSERT_TRUE(notch_.waitFor(allow));
    resident_->kill(SIGSTOP);
    clickAllow(0);
    std::this_thread::sleep_for(std::chrono::seconds(1)); // Longer than the guard delay.
    resident_->kill(SIGCONT);
    expectStillWaiting();
}

TEST_F(GuardTest, aBurstOfClicksNeverDecidesHoweverLongItLasts)
{
    click(deny);
    hook_->finish();
    clickAllow(0);
    hook_ = ask();
    for (int clicks = 0; clicks < 25; ++clicks)
        clickAllow(inABurst);
    expectStillWaiting();
}

TEST_F(GuardTest, aButtonThatHasMovedUnderThePointerBeginsAnew)
{
    click("查看完整参数");
    place_ = armed();
    click("返回命令视图");
    armed();
    click("查看完整参数");
    clickAllow(tooSoon);
    expectStillWaiting();
}

TEST_F(GuardTest, anythingThatHidesTheNotchBeginsAnewAndNothingHiddenCanBePressed)
{
    click("接入与交互设置");
    click("退出 QuillMoss Notch");
    ASSERT_TRUE(appears("继续查看"));
    notch_.act(place_);
    notch_.act(settled("继续查看"));
    clickAllow(tooSoon);
    armed();
    other_.openAbove({0, 0, 1280, 800}); // It raises itself.
    clickAllow(tooSoon);
    armed();
    lock("true");
    clickAllow(tooSoon);
    clickAllow(longEnough);
    lock("false");
    clickAllow(tooSoon);
    expectStillWaiting();
}

} // namespace
} // namespace notch
