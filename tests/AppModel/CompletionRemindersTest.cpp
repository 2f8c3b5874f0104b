// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppModel/AppModelTest.h"

namespace notch {
namespace {

// With the switch on.
void expectTurns(const std::string& frame, std::string_view trace)
{
    const auto after = [&](const std::string& operations) {
        StartedModel model;
        model.after("on completionRemindersEnabled");
        return model.after(std::string(frame).replace(frame.find("..."), 3, operations));
    };
    EXPECT_EQ(retold(trace, after), trace);
}

TEST(CompletionReminders, openOnceForATurnThatEndedInTheBackground)
{
    expectTurns("...", R"(begin A, end A, wait 0.79                                | closed queued 1
begin A, end A, wait 0.82                                | open turn A
end A, wait 1                                            | closed
begin A, end A, end A, wait 1                            | open turn A
begin A, front, end A, back, end A, wait 1               | closed
begin A, hide, end A, wait 1                             | open turn A
begin A, second, end A, wait 1                           | closed
begin A, end A, front, wait 0.5, back, wait 1            | closed
begin A, end A, switchApps, wait 1                       | closed
begin A, end A, begin B, end B, wait 0.82                | open turn A queued 1
begin A, end A, begin B, end B, wait 0.82, noted         | closed queued 1
begin A, end A, begin B, end B, wait 0.82, noted, wait 1 | open turn B ready
turn, begin A                                            | closed
turn, wait 29, front, wait 0.3                           | closed
)");
}

TEST(CompletionReminders, takeEveryOtherEndForNoSuccess)
{
    for (const auto reason : allCompletionReasons) {
        StartedModel model;
        model.play("on completionRemindersEnabled, begin A");
        model.fakes.tell(model.fakes.turnEnd("A", reason));
        const bool completed = reason == CompletionEvent::Reason::completed;
        EXPECT_EQ(model.state().completionStatus, completed
                                                      ? "已收到正常结束事件，仅配对后台新轮次提醒"
                                                      : "已收到非正常或不明终态，不作为完成提示");
        EXPECT_EQ(model.state().completionState.queuedCount, completed ? 1U : 0U) << name(reason);
    }
}

TEST(CompletionReminders, closeAfterTheirDwellAndLeaveABadge)
{
    expectTurns("turn, ...", R"(wait 3.97                                   | open turn A ready
wait 3.99, wait 20                          | closed turn A
enter, wait 9                               | open inside turn A ready
leave, wait 3.97                            | open turn A ready
enter, wait 9, leave, wait 1.49             | open turn A ready
enter, wait 9, leave, wait 1.51             | closed turn A
enter, wait 9, leave, wait 1, enter, wait 9 | open inside turn A ready
off autoCollapse, wait 9                    | open turn A ready
wait 1, off autoCollapse, wait 9            | open turn A ready
clickOutside                                | closed turn A
close, wait 9                               | closed turn A
close, open, wait 0.44                      | open turn A
close, open, wait 0.46                      | open turn A ready
wait 28.9, open, wait 0.5                   | closed
)");
}

TEST(CompletionReminders, bringTheHostToTheFrontOnce)
{
    expectTurns(
        "turn, ..., wait 1", R"(openTurn                                     | no  open turn A ready
wait 0.5, openTurn                           | yes  closed -> activate 7
wait 0.5, keepTokens, openTurn, openTurnLate | yes  no  closed -> activate 7
wait 0.5, front, openTurn                    | no  closed
wait 0.5, second, openTurn                   | no  closed
hide, wait 0.5, openTurn                     | yes  closed -> activate 7
wait 0.5, close, openTurn                    | no  closed turn A
wait 0.5, switchApps                         | closed
deaf, wait 0.5, openTurn, openTurn           | no  no  open turn A failed -> activate 7
deaf, wait 0.5, openTurn, close, open        | no  open turn A failed -> activate 7
deaf, wait 0.5, openTurn, wait 29            | no  closed -> activate 7
noted                                        | closed
keepTokens, begin A, end A, wait 1, notedLate | open turn A ready
keepTokens, begin A, end A, wait 1.5, openTurnLate | no  open turn A ready
)");
}

TEST(CompletionReminders, leaveTheNotchToRequestsReceiptsAndQuestions)
{
    expectTurns("ask A, wait 0.5, turn, ..., wait 0.5", R"( | open [A] armed turn A
openTurn, noted     | no  open [A] armed turn A
deny A, wait 1      | open receipt denied turn A -> server.decide A deny
deny A, wait 1.8    | open turn A ready -> server.decide A deny
close, gone A, wait 2 | open turn A ready
)");
    expectTurns("turn, wait 0.5, ..., wait 1", R"(ask A         | open [A] armed turn A
ask A, wait 9 | open [A] armed turn A
question      | open question Q ready turn A
question, unseen | closed turn A
ask A, gone A, wait 2.9 | open turn A ready
)");
    expectTurns("question, wait 1, turn, ..., wait 1", R"(       | open question Q ready turn A
unseen | open turn A ready
unseen, wait 9 | closed turn A
goAnswer | yes  open turn A ready -> activate 7
)");
}

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

TEST(CompletionReminders, hearNoEventOfAChannelThatStopped)
{
    StartedModel model;
    model.play("on completionRemindersEnabled");
    const auto late = model.fakes.completionServer.onEvent;
    model.play("off completionRemindersEnabled, on completionRemindersEnabled");
    late(model.fakes.turnStart("A"));
    model.play("end A, wait 1");
    EXPECT_EQ(model.state().completionState, CompletionOffer());
}

TEST(CompletionReminders, takeNoEventFromBeforeTheLastChangeOfApplicationsForABackgroundEnd)
{
    StartedModel model;
    model.play("on completionRemindersEnabled, begin A, wait 1");
    const auto end = model.fakes.turnEnd("A");
    model.play("wait 0.1, switchApps");
    model.fakes.tell(end);
    model.fakes.takeCalls();
    EXPECT_EQ(model.after("end A, wait 1"), "closed");
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
