// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppDelegate/QuitFlow.h"

#include "AppModel/AppModelTest.h"

namespace notch {
namespace {

// Notes what the flow did, and keeps the question for the test to answer.
struct FakeQuitEffects final : QuitEffects, CallNoter {
    using CallNoter::CallNoter;

    bool panelIsOnScreen() const override { return panelShows; }
    void orderPanelFront() override { note("front"); }
    void orderPanelOut() override { note("out"); }
    void ask(const QuitQuestion& question, std::function<void(Answer)> given) override
    {
        note("ask");
        asked = question;
        answered = std::move(given);
    }
    void terminate() override { note("terminate"); }

    bool panelShows = true;
    QuitQuestion asked;
    std::function<void(Answer)> answered;
};

// Every trace also shows that no hook is told anything: there would be a call.
class QuitFlowTest : public AppModelTest {
protected:
    QuitFlowTest()
    {
        operations_.insert({
            {"quit", [this] { flow_.quit(); }},
            {"signal", [this] { flow_.signalled(Uptime{next<double>()}); }},
            {"mayEnd", [this] { answer(flow_.shouldTerminate()); }},
            {"orderedOut", [this] { effects_.panelShows = false; }},
            {"sayStay", [this] { effects_.answered(QuitEffects::Answer::stay); }},
            {"sayLeave", [this] { effects_.answered(QuitEffects::Answer::leave); }},
        });
    }

    FakeQuitEffects effects_{fakes.calls};
    QuitFlow flow_{model, effects_};
};

TEST_F(QuitFlowTest, withNothingWaitingEveryWayEndsAtOnce)
{
    expectTrace(R"(mayEnd        | yes  closed
signal 1      | closed -> terminate
quit          | closed -> terminate
ask A, mayEnd | yes  open [A]
)");
}

TEST_F(QuitFlowTest, aDemonstrationKeepsNobodyFromQuitting)
{
    expectTrace(R"(demo hook, quit | open [demo] trying -> terminate
)");
}

TEST_F(QuitFlowTest, theQuestionSaysWhatWaits)
{
    play("ask A, ask B, quit");
    const QuitQuestion expected{
        .message = "还有 2 条请求待确认",
        .informativeText = "退出会把它们交回 QuillMoss 原流程，不会自动允许。",
        .stay = "继续查看",
        .leave = "交回 QuillMoss 并退出",
    };
    EXPECT_EQ(effects_.asked, expected);
}

TEST_F(QuitFlowTest, withRequestsWaitingOnlyLeavingEnds)
{
    expectTrace(R"(ask A, close, mayEnd             | no  open [A]
close, quit                      | closed [A] -> out, ask
quit                             | closed [A]
sayStay                          | open [A] -> front
orderedOut, close, quit, sayStay | open [A] -> out, ask
quit, mayEnd                     | no  open [A] -> out, ask
sayLeave, mayEnd                 | yes  open [A] -> terminate
)");
}

TEST_F(QuitFlowTest, onlyASecondSignalWithinTwoSecondsEndsWithRequestsWaiting)
{
    expectTrace(R"(ask A, close, signal 10 | open [A]
close, signal 12.01     | open [A]
close, signal 14        | closed [A] -> terminate
signal 20               | open [A]
close, signal 22        | closed [A] -> terminate
)");
}

} // namespace
} // namespace notch
