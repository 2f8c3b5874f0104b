// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppModel/StartedModel.h"

namespace notch {
namespace {

TEST(AppModelLaunch, startsInOrderAndStaysQuiet)
{
    FakeOutside outside;
    AppModel model(outside.seams());
    EXPECT_EQ(model.state().message, "正在启动本地审批桥接…");
    model.start();
    EXPECT_EQ(outside.takeCalls(),
        (Calls{"reminders.startObservers", "reminders.restarted", "monitor.start questions",
            "reminders.startTurnEnds", "server.start"}));
    AppModelState expected;
    expected.serviceReady = true;
    expected.message = "本地桥接已就绪";
    expected.configuredProfiles = {"QuillMoss"};
    EXPECT_EQ(model.state(), expected);
    EXPECT_EQ(outside.time.timers(), 0U);
    model.stop();
    EXPECT_EQ(
        outside.takeCalls(), (Calls{"reminders.stopTurnEnds", "server.stop", "monitor.stop"}));
}

TEST(AppModelLaunch, opensToShowWhyTheServerDidNotStart)
{
    FakeOutside outside;
    outside.server.startError = TransportError{.code = TransportError::Code::alreadyRunning};
    AppModel model(outside.seams());
    model.start();
    EXPECT_FALSE(model.state().serviceReady);
    EXPECT_EQ(model.state().message, "桥接未启动：An approval bridge is already running.");
    EXPECT_TRUE(model.state().isExpanded());
}

TEST_F(AppModelTest, saysThatHooksCannotReachItAnyMore)
{
    armedRequest("A");
    outside.server.callbacks.onUnreachable();
    EXPECT_TRUE(state().serviceReady) << "before the main queue has run";
    pass(0);
    EXPECT_FALSE(state().serviceReady);
    EXPECT_TRUE(state().message.find("Hook 无法连接") != std::string::npos) << state().message;
    EXPECT_TRUE(state().actionReady) << "what waits can still be answered";
}

TEST_F(AppModelTest, keepsTheEditionsWhenItsOwnPathIsUnknown)
{
    outside.profiles.reset();
    model.refreshConfiguredProfiles();
    EXPECT_EQ(state().configuredProfiles, Calls{"QuillMoss"});
    outside.profiles.emplace();
    model.refreshConfiguredProfiles();
    EXPECT_TRUE(state().configuredProfiles.empty());
}

TEST_F(AppModelTest, watchesTheHostAsThePreferencesSay)
{
    struct Row {
        bool approvals;
        bool questions;
        const char* call;
        const char* status;
    };
    const auto* const untouched = "原生安全确认尚未开启";
    for (const auto& row : {
             Row{true, true, "monitor.start approvals questions", untouched},
             Row{true, false, "monitor.start approvals", untouched},
             Row{false, true, "monitor.start questions", untouched},
             Row{false, false, "monitor.stop", "原生审批和提问提醒均已关闭"},
         }) {
        SCOPED_TRACE(row.call);
        outside.preferences.set(Preference::nativeApprovalsEnabled, row.approvals);
        outside.preferences.set(Preference::questionRemindersEnabled, row.questions);
        outside.calls.clear();
        model.refreshNativeMonitoring();
        EXPECT_EQ(outside.calls, (Calls{"reminders.restarted", row.call}));
        EXPECT_EQ(state().nativeStatus, row.status);
    }
}

TEST_F(AppModelTest, asksForAccessAndSwitchesOnOnlyWhenToldTo)
{
    model.requestNativeAccess(AppModel::NativeAccess::ask);
    EXPECT_EQ(outside.takeCalls(), (Calls{"monitor.requestAccess", "open settings",
                                       "reminders.restarted", "monitor.start questions"}));
    outside.monitor.trusted = true;
    model.requestNativeAccess(AppModel::NativeAccess::enableAndAsk);
    EXPECT_EQ(outside.takeCalls("monitor.start"), Calls{"monitor.start approvals questions"});
    EXPECT_TRUE(state().nativeAccessGranted);
    outside.monitor.trusted = false;
    outside.monitor.callbacks.onStatus("新的状态");
    pass(0);
    EXPECT_EQ(state().nativeStatus, "新的状态");
    EXPECT_FALSE(state().nativeAccessGranted);
}

TEST_F(AppModelTest, tellsItsSubscriberOnceAfterEachOperationThatChangedSomething)
{
    std::vector<AppModelState> told;
    model.subscribe([&] { told.push_back(state()); });
    const auto expectTold = [&](const char* operation, std::size_t times) {
        EXPECT_EQ(told.size(), times) << operation;
        if (!told.empty()) {
            EXPECT_EQ(told.back(), state()) << operation << " told of a state half-way";
        }
        told.clear();
    };
    model.setWidths(480, 240);
    model.setPointerInside(false);
    model.collapse();
    model.refreshNativeMonitoring();
    expectTold("what changes nothing", 0);
    outside.request("A");
    expectTold("a request", 1);
    outside.request("A");
    expectTold("a request that is refused", 0);
    pass(1);
    expectTold("arming", 1);
    outside.workspace.installed.clear();
    model.openHost({});
    expectTold("a host that is missing", 1);
    pass(1);
    told.clear();
    decide(Decision::allow);
    expectTold("a decision", 1);
}

} // namespace
} // namespace notch
