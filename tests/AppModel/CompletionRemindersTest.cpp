// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppModel/AppModelTest.h"

namespace notch {
namespace {

TEST(CompletionReminders, tellHowTheirChannelDoes)
{
    struct {
        Result<bool, std::string> hook;
        std::optional<TransportError> error;
        const char* status;
    } const rows[] = {
        {true, {}, "已接入，等待新一轮开始与结束事件"},
        {false, {}, "通知通道就绪；请单独安装结束提醒 Hook"},
        {Failure{std::string("坏了")}, {}, "结束提醒配置需核对：坏了"},
        {true, TransportError{.code = TransportError::Code::alreadyRunning},
            "结束提醒未启动：An approval bridge is already running."},
    };
    for (const auto& row : rows) {
        StartedModel model;
        model.fakes.hookInstalled = row.hook;
        model.fakes.completionServer.startError = row.error;
        EXPECT_EQ(model.state().completionStatus, "本轮结束提醒已关闭");
        model.play("on completionRemindersEnabled");
        EXPECT_EQ(model.state().completionStatus, row.status);
        EXPECT_EQ(model.state().completionHookInstalled, row.hook.ok() && row.hook.value());
    }
}

// However many there are, what is kept stays small, the queue short and the process asleep after.
TEST(CompletionReminders, keepWithinTheirBoundsUnderAFlood)
{
    StartedModel model;
    model.play("on completionRemindersEnabled");
    const std::string longest(256, 'x');
    for (int i = 0; i < 5'000; ++i) {
        auto start = model.fakes.turnEvent(longest, longest);
        start.sessionID.replace(0, 8, std::to_string(10'000'000 + i % 2'500));
        start.generationID->replace(0, 8, std::to_string(10'000'000 + i));
        start.observedAt = start.observedAt + Seconds{i % 7 == 0 ? -4.0 : 0.0};
        model.fakes.tell(start);
        start.kind = CompletionEvent::Kind::ended;
        start.reason = CompletionEvent::Reason::completed;
        model.fakes.tell(start);
    }
    EXPECT_EQ(
        model.state().completionState.trackedSessionCount, CompletionReminderState::mostSessions);
    EXPECT_EQ(model.state().completionState.queuedCount, CompletionReminderState::mostReminders);
    EXPECT_EQ(model.fakes.time.timers(), 1U);
    model.play("wait 31");
    EXPECT_EQ(model.fakes.time.timers(), 0U);
}

} // namespace
} // namespace notch
