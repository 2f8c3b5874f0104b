// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Rehearsal/StartedModel.h"
#include "SelfCheck/MovingNotch.h"
#include "SelfCheck/Suite.h"
#include "SelfCheck/Suites.h"

namespace notch {
namespace {

constexpr TraceCheck observations[] = {
    {"the first scan of a question shows nothing, a second identical one opens the notch",
        R"(scan Q | closed
scan Q | open question Q)"},
    {"a scan that saw no question, or could not be read, makes the next one a first one",
        R"(scan Q, unseen, scan Q     | closed
scan Q                     | open question Q
unreadable, scan Q         | closed
scan Q                     | closed question Q)"},
    {"another page is confirmed anew and does not open the notch again",
        R"(question, close  | closed question Q
page2 Q          | closed
page2 Q          | closed question Q page 2
scan Q, page2 Q  | closed)"},
    {"one missed scan does not end a question, two in a row do",
        R"(question, close, unseen, scan Q, scan Q         | closed question Q
unseen, unreadable, unseen, scan Q, scan Q      | closed question Q
unseen, unseen, scan Q, scan Q                  | open question Q)"},
};

constexpr DelayCheck guards[] = {
    {"a question arms 0.45 seconds after it opened the notch", "question", 0.45, "open question Q",
        "open question Q ready"},
    {"further scans do not delay the arming", "question, wait 0.4, scan Q", 0.05, "open question Q",
        "open question Q ready"},
    {"a reopened question arms anew", "question, wait 1, close, open", 0.45, "open question Q",
        "open question Q ready"},
};

constexpr TraceCheck arming[] = {
    {"an early click on a question does nothing",
        R"(question, goAnswer            | no  open question Q
wait 0.44, goAnswer           | no  open question Q
wait 0.02, goAnswer           | yes  closed -> activate 7)"},
    {"a question that is not on the screen, or has not been for the guard delay, takes no click",
        R"(frame, wait 0.46                    | yes  closed -> activate 7
frame, wait 0.44                    | no  open question Q
frame, wait 1, move                 | no  open question Q
frame, wait 1, quietly blank        | no  open question Q ready
frame, wait 0.44, scan Q, wait 0.02 | yes  closed -> activate 7
frame, wait 1, frame                | yes  closed -> activate 7)",
        "watched, question, wait 0.1, ..., goAnswer"},
    {"what withdraws or covers a question while it arms keeps it unarmed",
        R"(close       | closed question Q
front       | closed
close, open | open question Q
ask A       | open [A] question Q)",
        "question, wait 0.4, ..., wait 0.1"},
};

constexpr TraceCheck reopening[] = {
    {"a collapsed question stays as a badge and does not open again by itself",
        R"(question, wait 1, close | closed question Q
scan Q, scan Q, wait 9  | closed question Q
page2 Q, page2 Q        | closed question Q page 2)"},
    {"a reopened question cannot be handed over at once",
        R"(question, wait 1, close, open, goAnswer | no  open question Q
wait 0.46, goAnswer                     | yes  closed -> activate 7)"},
    {"a click outside does not close a question", R"(question, clickOutside | open question Q)"},
};

constexpr TraceCheck withdrawal[] = {
    {"a host in front withdraws its question at once, without a scan",
        R"(switchApps                    | closed
goAnswer                      | no  closed
open                          | open
unreadable                    | closed)",
        "question, wait 1, front, ..."},
    {"a scan that was made with the host in front is not taken",
        R"(question, wait 1, front, scan Q | open question Q ready)"},
    {"a hidden host, or a second one, withdraws the question too",
        R"(hide, switchApps | closed
second, goAnswer | no  closed)",
        "question, wait 1, ..."},
    {"another application in front does not withdraw it",
        R"(question, wait 1, switchApps | open question Q ready)"},
    {"going to the background again does not repeat the alert for the same question",
        R"(question, wait 1, front, switchApps, back | closed
scan Q, scan Q                            | closed question Q
scan R, scan R                            | open question R)"},
    {"switching the reminders off withdraws the question, and it may open again after",
        R"(off questionRemindersEnabled                    | closed -> monitor.stop
scan R, scan R, on questionRemindersEnabled     | closed -> monitor.start questions
scan Q, scan Q                                  | open question Q)",
        nullptr},
};

constexpr TraceCheck tokens[] = {
    {"a new question opens the notch again, with an arming of its own",
        R"(question, wait 1, close, scan R, scan R | open question R
wait 0.44                               | open question R
wait 0.02                               | open question R ready)"},
    {"a button drawn for an older question does nothing for a newer one that is armed",
        R"(question, wait 1, keepTokens, scan R, scan R | open question R
wait 1, goAnswerLate                         | no  open question R ready)"},
};

constexpr TraceCheck handoff[] = {
    {"a click hands over once, and a double click no second time",
        R"(question, wait 1, keepTokens       | open question Q ready
goAnswerLate, goAnswerLate         | yes  no  closed -> activate 7
scan Q, scan Q, open, goAnswerLate | no  open)"},
    {"a hand-over that fails keeps the question, says so, and is never tried again",
        R"(question, wait 1, deaf, goAnswer | no  open question Q failed -> activate 7
wait 1, scan Q, goAnswer         | no  open question Q failed
close, open, wait 1, goAnswer    | no  open question Q failed)"},
};

constexpr TraceCheck priorities[] = {
    {"a request and its receipt have the notch before a question, which waits unarmed",
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
question, goAnswer               | no  open [A] armed question Q)",
        "ask A, wait 0.5, ..., wait 0.5"},
    {"the closing after a receipt does not hide a question that came meanwhile",
        R"(         | closed -> server.decide A deny
question | open question Q -> server.decide A deny)",
        "ask A, wait 0.5, deny A, wait 1.9, ..., wait 0.1"},
};

// What was seen before the last change of applications, or under an older monitoring, says nothing
// of now.
void checkOldScans(Suite& suite)
{
    StartedModel started;
    const auto begun = started.fakes.time.uptime();
    const auto late = started.fakes.monitor.callbacks.onQuestion;
    const auto deliver = [&](Uptime capturedAt) {
        late(FakeDependencies::question("Q"), capturedAt);
        late(FakeDependencies::question("Q"), capturedAt);
        return started.after("wait 0");
    };
    started.play("wait 0.5, switchApps");
    suite.check(
        "scans from before a change of applications show nothing", deliver(begun), "closed");
    started.play("wait 0.1, watch");
    started.fakes.takeCalls();
    suite.check("scans of an older monitoring show nothing", deliver(started.fakes.time.uptime()),
        "closed");
    suite.check("fresh scans after it do", started.after("scan Q, scan Q"), "open question Q");
}

// The same canvas for the shortest question and the longest.
void checkCanvas(Suite& suite)
{
    struct Row {
        const char* text;
        const char* operations;
    };
    for (const auto& [text, operations] : {
             Row{"a question is shown whole on a canvas of 480 points", "question"},
             Row{"a long question is shown on the same canvas, and stays on the screen",
                 "longQuestion"},
             Row{"a failed hand-over is told on the same canvas",
                 "question, deaf, wait 1, clickOn question-go-answer"},
         }) {
        MovingNotch notch;
        notch.play(std::string("layOut, ") + operations + ", wait 1");
        const auto& frame = notch.panel.current;
        suite.check(text, frame.width == 480 && notch.panel.viewport().surfaceWidth() == 480
                              && notch.panel.viewport().hosting().width() == 480
                              && frame.height <= 800 && notch.showsWhole("question-reminder"));
    }
    MovingNotch notch;
    notch.play("layOut, wait 1");
    bool fixed = true;
    notch.panel.frameApplied = [&] {
        fixed = fixed && notch.panel.viewport().width() == 480
             && notch.panel.viewport().hosting().width() == 480;
    };
    notch.play("question, wait 1, close, wait 1, open, wait 1");
    suite.check("the canvas keeps its width while the notch opens and closes on a question", fixed);
}

void checkButton(Suite& suite)
{
    MovingNotch notch;
    notch.play("layOut, question, wait 0.44");
    suite.check("the question's button is disabled until the guard delay is over",
        notch.find("question-go-answer") && !notch.isArmed("question-go-answer"));
    notch.play("wait 0.02");
    suite.check("and enabled then", notch.isArmed("question-go-answer"));
    suite.check("its click brings the host to the front once, and closes the notch",
        notch.after("clickOn question-go-answer, clickOn question-go-answer, calls, wait 1"),
        "activate 7  400,0 480x32/236 narrow");
    notch.play("unseen, unseen, question, wait 1, pressOn question-go-answer, close, open, wait 1");
    suite.check("a press that is held while the question closes and opens again does nothing",
        notch.after("releaseOn question-go-answer, calls"), "400,0 480xall/480 expanded");
}

// The last barrier, should the button ever be armed by mistake.
void checkStateAlone(Suite& suite)
{
    QuestionReminderState state;
    state.observe(FakeDependencies::question("Q"));
    state.observe(FakeDependencies::question("Q"));
    auto collapsed = state;
    collapsed.collapse();
    suite.check("the state counts a question that was collapsed as seen",
        !collapsed.claimAutoExpansion(true) && state.claimAutoExpansion(true));
    const auto token = state.token().value_or(QuestionReminderState::PresentationToken{});
    suite.check("the state hands over once, and for its own token only",
        !state.beginHandoff({UUID::random()}, true) && !state.beginHandoff(token, false)
            && state.beginHandoff(token, true) && !state.beginHandoff(token, true));
}

} // namespace

int checkQuestions(std::ostream& out)
{
    Suite suite(out, "question UI");
    suite.check(observations);
    suite.check(guards);
    suite.check(arming);
    checkButton(suite);
    checkCanvas(suite);
    suite.check(reopening);
    suite.check(withdrawal);
    checkOldScans(suite);
    suite.check(tokens);
    suite.check(handoff);
    checkStateAlone(suite);
    suite.check(priorities);
    return suite.end("Question UI", "fake activation only, no question answered");
}

} // namespace notch
