// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Rehearsal/StartedModel.h"
#include "SelfCheck/MovingNotch.h"
#include "SelfCheck/Suite.h"
#include "SelfCheck/Suites.h"

namespace notch {
namespace {

constexpr TraceCheck pairs[] = {
    {"a turn that began and ended in the background opens the notch once, 0.8 seconds later",
        R"(remind, begin A, end A, wait 0.79 | closed queued 1
wait 0.03                 | open turn A
end A, wait 9             | closed turn A)"},
    {"an end without its start is none", R"(remind, end A, wait 1 | closed)"},
    {"an end that comes twice counts once", R"(remind, begin A, end A, end A, wait 1 | open turn A
noted, wait 1                         | closed)"},
    {"a new turn takes the reminder of the one before it", R"(remind, turn, begin A | closed)"},
    {"turns that ended together come one after the other",
        R"(remind, begin A, end A, begin B, end B, wait 0.82 | open turn A queued 1
noted                                             | closed queued 1
wait 1                                            | open turn B ready)"},
    {"a reminder goes with nobody's doing after 30 seconds",
        R"(remind, turn, wait 28.9 | closed turn A
open, wait 0.5          | closed)"},
    {"with the reminders switched off a turn is none, and what waits goes",
        R"(begin A, end A, wait 1                     | closed
remind, begin A, end A, wait 1             | open turn A
off completionRemindersEnabled             | closed -> turnEnds.stop)"},
};

constexpr TraceCheck guard[] = {
    {"a reminder cannot be acted on at once, only after the guard delay",
        R"(remind, turn, openTurn | no  open turn A
wait 0.4, openTurn     | no  open turn A
wait 0.05, openTurn    | yes  closed -> activate 7)"},
    {"a click brings the host to the front once, and a double click no second time",
        R"(remind, turn, wait 0.5, keepTokens | open turn A ready
openTurn, openTurnLate             | yes  no  closed -> activate 7)"},
    {"what is not on the screen, or has not been for the guard delay, takes no click",
        R"(frame, wait 1                | yes  closed -> activate 7
frame, wait 0.44             | no  open turn A
wait 1                       | no  open turn A
frame, wait 1, blank         | no  open turn A
frame, wait 1, quietly blank | no  open turn A ready
frame, wait 1, move          | no  open turn A
frame, wait 1, close, open   | no  open turn A
deaf, frame, wait 1          | no  closed -> activate 7)",
        "remind, watched, turn, ..., openTurn, noted"},
    {"a reminder noted is gone, and nobody comes to the front",
        R"(remind, turn, noted, wait 1 | closed)"},
    {"a button drawn for an older reminder does nothing to a newer one",
        R"(notedLate, wait 0.5    | open turn A ready
openTurnLate, wait 0.5 | no  open turn A ready)",
        "remind, turn, keepTokens, begin A, end A, wait 1, ..."},
};

constexpr TraceCheck dwell[] = {
    {"a reminder closes 4 seconds after it opened and leaves a badge, and never opens again",
        R"(remind, turn, wait 3.97 | open turn A ready
wait 0.02               | closed turn A
wait 20                 | closed turn A)"},
    {"a pointer that stays outside does not shorten its time",
        R"(remind, turn, leave, wait 3.97 | open turn A ready)"},
    {"it stays while the pointer is inside and closes 1.5 seconds after it left",
        R"(wait 9                          | open inside turn A ready
wait 9, leave, wait 1.49        | open turn A ready
wait 9, leave, wait 1.51        | closed turn A
wait 9, leave, wait 1, enter, wait 9 | open inside turn A ready)",
        "remind, turn, enter, ..."},
    {"with automatic closing switched off it stays",
        R"(off autoCollapse, wait 9         | open turn A ready
wait 1, off autoCollapse, wait 9 | open turn A ready)",
        "remind, turn, ..."},
    {"a click outside or an explicit collapse leaves the badge",
        R"(clickOutside  | closed turn A
close, wait 9 | closed turn A)",
        "remind, turn, ..."},
    {"a reopened reminder arms anew",
        R"(remind, turn, wait 1, close, openTurn | no  closed turn A
open, openTurn                        | no  open turn A
wait 0.44                             | open turn A
wait 0.02, openTurn                   | yes  closed -> activate 7)"},
};

constexpr TraceCheck failures[] = {
    {"a host that does not come is said so and asked no second time",
        R"(openTurn    | no  no  open turn A failed -> activate 7
close, open | no  open turn A failed -> activate 7
wait 29     | no  closed -> activate 7)",
        "remind, turn, deaf, wait 0.5, openTurn, ..."},
    {"a host that is hidden is brought to the front",
        R"(remind, turn, hide, wait 0.5, openTurn | yes  closed -> activate 7)"},
};

void checkReasons(Suite& suite)
{
    suite.check("a turn that ended normally is said so",
        StartedModel().after("remind, begin A, end A, status"),
        "已收到正常结束事件，仅配对后台新轮次提醒  closed queued 1");
    for (const auto reason : allCompletionReasons) {
        if (reason == CompletionEvent::Reason::completed)
            continue;
        StartedModel started;
        started.play("remind, begin A");
        started.fakes.tell(started.fakes.turnEnd("A", reason));
        suite.check("a turn that ended as " + std::string(name(reason)) + " is no success",
            started.after("status, end A, wait 1"),
            "已收到非正常或不明终态，不作为完成提示  closed");
    }
}

constexpr TraceCheck foreground[] = {
    {"a turn that ended in the foreground is not shown, nor when the host goes back",
        R"(front, end A, wait 1        | closed
front, end A, back, wait 1  | closed
front, end A, back, end A, wait 1 | closed)",
        "remind, begin A, ..."},
    {"a host in front takes what waits, and its return to the background brings nothing back",
        R"(remind, begin A, end A, front, wait 0.5, back, wait 1 | closed)"},
    {"a host in front takes the reminder on show",
        R"(wait 0.3           | closed
openTurn, wait 0.3 | no  closed)",
        "remind, turn, wait 0.5, front, ..."},
    {"a host in front takes the badge of a reminder that was closed",
        R"(remind, turn, wait 9 | closed turn A
front, wait 0.3      | closed)"},
    {"a second process of the host takes it too",
        R"(begin A, second, end A, wait 1 | closed
turn, wait 0.5, second, openTurn, wait 1 | no  closed)",
        "remind, ..."},
    {"a hidden host counts as in the background",
        R"(remind, begin A, hide, end A, wait 1 | open turn A)"},
    {"a change of applications takes what waits and what is on show",
        R"(begin A, end A, switchApps, wait 1 | closed
turn, wait 0.5, switchApps         | closed)",
        "remind, ..."},
};

// The end was on its way while the person had another application before them.
void checkOldEnds(Suite& suite)
{
    StartedModel started;
    started.play("remind, begin A, wait 1");
    const auto end = started.fakes.turnEnd("A");
    started.play("wait 0.1, switchApps");
    started.fakes.tell(end);
    suite.check("an end from before a change of applications is used up unseen",
        started.after("end A, wait 1"), "closed");

    StartedModel again;
    again.play("remind");
    const auto late = again.fakes.completionServer.onEvent;
    again.play("off completionRemindersEnabled, remind");
    late(again.fakes.turnStart("A"));
    suite.check("an event of a channel that was stopped is not heard", again.after("end A, wait 1"),
        "closed");
}

constexpr TraceCheck priorities[] = {
    {"a question has the notch before a turn's end, which waits and then opens",
        R"(       | open question Q ready turn A
unseen | open turn A ready
unseen, wait 9 | closed turn A
goAnswer | yes  open turn A ready -> activate 7)",
        "remind, question, wait 1, turn, ..., wait 1"},
    {"a question takes the notch from a turn's end",
        R"(question         | open question Q ready turn A
question, unseen | closed turn A)",
        "remind, turn, wait 0.5, ..., wait 1"},
    {"a request takes the notch from a turn's end, whose own closing does not close it",
        R"(ask A         | open [A] armed turn A
ask A, wait 9 | open [A] armed turn A
ask A, gone A, wait 2.9 | open turn A ready)",
        "remind, turn, wait 0.5, ..., wait 1"},
    {"a request and its receipt have the notch before a turn's end, which loses nothing by it",
        R"( | open [A] armed turn A
openTurn, noted     | no  open [A] armed turn A
deny A, wait 1      | open receipt denied turn A -> server.decide A deny
deny A, wait 1.8    | open turn A ready -> server.decide A deny
close, gone A, wait 2 | open turn A ready)",
        "remind, ask A, wait 0.5, turn, ..., wait 0.5"},
};

void checkFit(Suite& suite)
{
    MovingNotch notch;
    notch.play("layOut, remind, turn, wait 0.4");
    suite.check("a turn's end is shown whole on the surface, off the screen as on it",
        notch.panel.current.width == 480 && notch.panel.current.height <= 800
            && notch.showsWhole("completion-reminder"));
    suite.check("its open button is disabled until the guard delay is over",
        notch.find("completion-open") && !notch.isArmed("completion-open"));
    notch.play("deaf, wait 0.1, clickOn completion-open, wait 1");
    suite.check("a host that does not come is told on the surface, and the button stays disabled",
        notch.showsWhole("completion-reminder") && !notch.isArmed("completion-open")
            && notch.find("completion-activation-failed")
            && notch.find("completion-activation-failed")->isVisible());
    suite.check("the button that takes note closes the notch",
        notch.after("calls, clickOn completion-dismiss, wait 1, calls"),
        "activate 7  400,0 480x32/236 narrow");
}

} // namespace

int checkCompletions(std::ostream& out)
{
    Suite suite(out, "completion UI");
    suite.check(pairs);
    suite.check(guard);
    suite.check(dwell);
    suite.check(failures);
    checkReasons(suite);
    suite.check(foreground);
    checkOldEnds(suite);
    suite.check(priorities);
    checkFit(suite);
    return suite.end("Completion UI", "no real app activation or task decisions");
}

} // namespace notch
