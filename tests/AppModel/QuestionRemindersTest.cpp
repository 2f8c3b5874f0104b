// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppModel/AppModelTest.h"

namespace notch {
namespace {

TEST_F(AppModelTest, showsAQuestionThatTwoScansSawAndOpensOnceForIt)
{
    expectTrace(R"(scan Q                            | closed
scan Q                            | open question Q
wait 0.44, scan Q                 | open question Q
goAnswer                          | no  open question Q
wait 0.02                         | open question Q ready
close                             | closed question Q
scan Q, scan Q                    | closed question Q
page2 Q                           | closed
page2 Q                           | closed question Q page 2
open                              | open question Q page 2
goAnswer, wait 0.46               | no  open question Q page 2 ready
unseen, unseen, wait 1            | closed
scan R, scan R                    | open question R
)");
}

TEST_F(AppModelTest, bringsTheHostToTheFrontOnceForAQuestion)
{
    expectTrace(R"(question, wait 0.46, keepTokens                   | open question Q ready
goAnswerLate, goAnswerLate                        | yes  no  closed -> activate 7
scan Q, scan Q, open                              | open
scan R, scan R, wait 0.46, goAnswerLate           | no  open question R ready
deaf, goAnswer                                    | no  open question R failed -> activate 7
wait 1, scan R, goAnswer, close, open, wait 1     | no  open question R failed
)");
}

// What withdraws a question that is on show and armed, and what takes its action away.
TEST(QuestionReminders, withdrawWhenTheHostIsBeforeThePerson)
{
    expectEach("question, wait 1, ...", R"(front, switchApps                       | closed
front, goAnswer                         | no  closed
front, open                             | open
front, scan Q                           | open question Q ready
front, unreadable                       | closed
hide, switchApps                        | closed
second, goAnswer                        | no  closed
switchApps                              | open question Q ready
off questionRemindersEnabled            | closed -> monitor.stop
off questionRemindersEnabled, scan R, scan R, on questionRemindersEnabled | closed -> monitor.stop, monitor.start questions
front, switchApps, back, scan Q, scan Q | closed question Q
front, switchApps, back, scan R, scan R | open question R
)");
    expectEach("question, wait 0.4, ..., wait 0.1", R"(close       | closed question Q
front       | closed
close, open | open question Q
ask A       | open [A] question Q
)");
}

TEST(QuestionReminders, leaveTheNotchToRequestsAndReceipts)
{
    expectEach("ask A, wait 0.5, ..., wait 0.5",
        R"(question                         | open [A] armed question Q
question, page2 Q, page2 Q       | open [A] armed question Q page 2
question, unseen                 | open [A] armed
question, deny A                 | open receipt denied question Q -> server.decide A deny
question, deny A, wait 1         | open receipt denied question Q -> server.decide A deny
question, deny A, wait 1.8       | open question Q ready -> server.decide A deny
question, close, deny A          | closed [A] question Q
question, deny A, unseen, wait 2 | closed -> server.decide A deny
question, close, gone A          | closed receipt unavailable question Q
question, close, gone A, wait 2  | open question Q ready
question, goAnswer               | no  open [A] armed question Q
)");
    // The notch closes 0.15 seconds after the end of a receipt, but not over a question.
    expectEach("ask A, wait 0.5, deny A, wait 1.9, ..., wait 0.1",
        R"(         | closed -> server.decide A deny
question | open question Q -> server.decide A deny
)");
}

TEST_F(AppModelTest, believesOnlyScansOfThePresentSituation)
{
    const auto begun = fakes.time.uptime();
    const auto late = fakes.monitor.callbacks.onQuestion;
    const auto deliver = [&](const auto& onQuestion) {
        onQuestion(FakeDependencies::question("Q"), begun);
        onQuestion(FakeDependencies::question("Q"), begun);
        fakes.time.runPosted();
        return state().questionState.visible().has_value();
    };
    play("wait 0.5, switchApps");
    EXPECT_FALSE(deliver(late)) << "an application has come to the front since";
    play("watch");
    fakes.applicationEvents.changed = {};
    EXPECT_FALSE(deliver(late)) << "of an older monitoring";
}

} // namespace
} // namespace notch
