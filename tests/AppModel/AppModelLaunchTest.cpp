// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppModel/AppModelTest.h"

namespace notch {
namespace {

TEST(AppModelLaunch, startsInOrderAndStaysQuiet)
{
    FakeDependencies fakes;
    fakes.preferences.set(Preference::completionRemindersEnabled, true);
    AppModel model(fakes.seams());
    EXPECT_EQ(model.state().completionStatus, "本轮结束提醒尚未开启");
    EXPECT_EQ(model.state().message, "正在启动本地审批桥接…");
    model.start();
    EXPECT_EQ(
        fakes.takeCalls(), (Calls{"monitor.start questions", "turnEnds.start", "server.start"}));
    AppModelState expected;
    expected.serviceReady = true;
    expected.message = "本地桥接已就绪";
    expected.configuredProfiles = {"QuillMoss"};
    expected.switches.set(Preference::completionRemindersEnabled, true);
    expected.completionStatus = "已接入，等待新一轮开始与结束事件";
    expected.completionHookInstalled = true;
    EXPECT_EQ(model.state(), expected);
    EXPECT_EQ(fakes.time.timers(), 0U);
    model.stop();
    EXPECT_EQ(fakes.takeCalls(), (Calls{"turnEnds.stop", "server.stop", "monitor.stop"}));
}

TEST(AppModelLaunch, opensToShowWhyTheServerDidNotStart)
{
    FakeDependencies fakes;
    fakes.server.startError = TransportError{.code = TransportError::Code::alreadyRunning};
    AppModel model(fakes.seams());
    model.start();
    EXPECT_FALSE(model.state().serviceReady);
    EXPECT_EQ(model.state().message, "桥接未启动：An approval bridge is already running.");
    EXPECT_TRUE(model.state().isExpanded());
}

TEST_F(AppModelTest, saysThatHooksCannotReachItAnyMore)
{
    play("ask A, wait 1");
    fakes.server.callbacks.onUnreachable();
    EXPECT_TRUE(state().serviceReady) << "before the main queue has run";
    expectTrace(
        R"(wait 0, message | 审批桥接的套接字已被移除或替换，Hook 无法连接；请重启本应用  open [A] armed
)");
    EXPECT_FALSE(state().serviceReady);
}

TEST_F(AppModelTest, keepsTheEditionsWhenItsOwnPathIsUnknown)
{
    fakes.profiles.reset();
    model.refreshConfiguredProfiles();
    EXPECT_EQ(state().configuredProfiles, Calls{"QuillMoss"});
    fakes.profiles.emplace();
    model.refreshConfiguredProfiles();
    EXPECT_TRUE(state().configuredProfiles.empty());
}

TEST_F(AppModelTest, watchesTheHostAsThePreferencesSay)
{
    expectTrace(R"(watch                        | closed -> monitor.start questions
on nativeApprovalsEnabled    | closed -> monitor.start approvals questions
on nativeApprovalsEnabled    | closed
off questionRemindersEnabled | closed -> monitor.start approvals
)");
    EXPECT_EQ(state().nativeStatus, "原生安全确认尚未开启");
    expectTrace(R"(off nativeApprovalsEnabled | closed -> monitor.stop
)");
    EXPECT_EQ(state().nativeStatus, "原生审批和提问提醒均已关闭");
    expectTrace(R"(on completionRemindersEnabled  | closed -> turnEnds.start
off completionRemindersEnabled | closed -> turnEnds.stop
)");
}

TEST_F(AppModelTest, keepsASwitchForTheNextStart)
{
    play("off autoCollapse, on autoCollapse, off hoverToExpand");
    EXPECT_EQ(
        fakes.preferences.written, (std::map<Preference, bool>{{Preference::autoCollapse, true},
                                       {Preference::hoverToExpand, false}}));
    AppModel next(fakes.seams());
    next.start();
    EXPECT_EQ(next.state().switches, state().switches);
}

TEST_F(AppModelTest, asksForAccessAndSwitchesOnOnlyWhenToldTo)
{
    model.requestNativeAccess(AppModel::NativeAccess::ask);
    EXPECT_EQ(fakes.takeCalls(),
        (Calls{"monitor.requestAccess", "open settings", "monitor.start questions"}));
    fakes.monitor.trusted = true;
    model.requestNativeAccess(AppModel::NativeAccess::enableAndAsk);
    EXPECT_EQ(fakes.takeCalls("monitor.start"), Calls{"monitor.start approvals questions"});
    EXPECT_TRUE(state().nativeAccessGranted);
    fakes.monitor.trusted = false;
    fakes.report(fakes.monitor.callbacks.onStatus, "新的状态");
    EXPECT_EQ(state().nativeStatus, "新的状态");
    EXPECT_FALSE(state().nativeAccessGranted);
}

TEST_F(AppModelTest, tellsItsSubscriberOnceAfterEachOperationThatChangedSomething)
{
    std::vector<AppModelState> told;
    model.subscribe([&] { told.push_back(state()); });
    const std::pair<const char*, std::size_t> rows[]{{"leave, close, watch", 0}, {"ask A", 1},
        {"ask A", 0}, {"wait 1", 1}, {"noHost, host quillmoss", 1}, {"wait 1", 1}, {"allow A", 1}};
    for (const auto& [operations, times] : rows) {
        told.clear();
        play(operations);
        EXPECT_EQ(told, std::vector<AppModelState>(times, state())) << operations;
    }
}

} // namespace
} // namespace notch
