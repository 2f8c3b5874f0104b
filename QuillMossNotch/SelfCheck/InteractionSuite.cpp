// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Rehearsal/StartedModel.h"
#include "SelfCheck/Suite.h"
#include "SelfCheck/Suites.h"

namespace notch {
namespace {

void checkQuietStart(Suite& suite)
{
    FakeDependencies fakes;
    AppModel model(fakes.seams());
    suite.check("before the start the notch is compact and says that the bridge is being started",
        !model.state().isExpanded() && model.state().message == "正在启动本地审批桥接…");
    model.start();
    AppModelState quiet;
    quiet.serviceReady = true;
    quiet.message = "本地桥接已就绪";
    quiet.configuredProfiles = {"QuillMoss"};
    quiet.completionHookInstalled = true;
    quiet.completionStatus = "本轮结束提醒已关闭";
    suite.check("a quiet start leaves the notch compact, with nothing armed, and says it is ready",
        model.state() == quiet);
    suite.check("a quiet start leaves no timer running", fakes.time.timers() == 0);
    suite.check("a quiet start asks nobody for a decision and brings no host to the front",
        fakes.takeCalls() == Calls{"monitor.start questions", "server.start"});
}

constexpr TraceCheck demonstrations[] = {
    {"a demonstration expands the notch and arms when the guard delay is over",
        R"(demo hook  | open [demo] trying
wait 0.459 | open [demo] trying
wait 0.002 | open [demo] armed trying)"},
    {"a demonstration of the host's own card does the same",
        R"(demo native | open [demo] trying
wait 0.459  | open [demo] trying
wait 0.002  | open [demo] armed trying)"},
    {"a demonstration can be decided for an hour, and no longer",
        R"(3599.9 | yes  open [demo] armed trying
3600   | no  open [demo] armed trying)",
        "demo hook, wait ..., press demo, pressed"},
    {"a demonstration reaches nobody, by a decision as by its end",
        R"(endDemo                        | closed
demo hook                      | open [demo] trying
wait 0.47, allow demo, message | 演示结束 · 没有执行任何命令  open receipt allowed demo
wait 1.96                      | closed
demo native, endDemo           | open receipt returned demo native
wait 1.5, demo hook, wait 0.47 | open [demo] armed trying)"},
    {"a real request takes the notch from a demonstration, and none comes over it",
        R"(demo hook, wait 60, ask A | open [A]
wait 1, endDemo           | open [A] armed
close, demo hook, wait 1  | open [A] armed
deny A                    | open receipt denied -> server.decide A deny)"},
};

constexpr TraceCheck details[] = {
    {"details unfold in place: the same request stays on show, and armed",
        R"(ask A, ask B, wait 1 | open [A] B armed
details              | open [A] B armed details
ask C                | open [A] B C armed details)"},
    {"another request begins with its details folded",
        R"(ask A, ask B, details | open [A] B details
switch 1              | open A [B]
switch 1              | open [A] B)"},
    {"what is copied is what is on show: the command, or with details all parameters",
        R"(ask A, ask B, copy, pasted | ls  open [A] B copied A
details, copy, pasted      | {"command":"ls"}  open [A] B details copied A
select B                   | open A [B])"},
};

constexpr TraceCheck collapses[] = {
    {"a collapse keeps the request and disarms its buttons",
        R"(ask A, ask B, wait 1               | open [A] B armed
close                              | closed [A] B
allow A, press A, pressed, wait 20 | no  closed [A] B)"},
    {"reopening cannot approve at once, only after the guard delay",
        R"(ask A, wait 1, close, open, allow A | open [A]
wait 0.44, allow A                  | open [A]
wait 0.03, allow A                  | open receipt allowed -> server.decide A allow)"},
    {"reopening with details unfolded cannot approve at once either",
        R"(ask A, wait 1, details, close, open, allow A | open [A] details
wait 1, allow A                              | open receipt allowed -> server.decide A allow)"},
};

constexpr TraceCheck clicks[] = {
    {"a click cannot be replayed: the request is decided once and its buttons are disarmed",
        R"(ask A, ask B, wait 9, allow A | open [B] receipt allowed -> server.decide A allow
allow A, allow B, press B     | open [B] receipt allowed
dismiss, allow A, allow B     | open [B])"},
    {"a button that is out of date decides nothing",
        R"(ask A, ask B, allow A, press A, pressed     | no  open [A] B
wait 1, allow B, press B, pressed           | no  open [A] B armed
close, allow A, press A, pressed            | no  closed [A] B
open, wait 0.3, allow A, press A, pressed   | no  open [A] B
wait 1, open, allow A, press A, pressed     | no  open [A] B
wait 1, clock 60, allow A, press A, pressed | no  open [A] B armed)"},
    {"a press counts only with its release in the same armed time of the same request",
        R"(                   | open [B] receipt allowed -> server.decide A allow
ask C              | open [B] C receipt allowed -> server.decide A allow
gone B             | open receipt allowed -> server.decide A allow
close, open        | open [A] B armed
open               | open [A] B armed
switch 1           | open A [B] armed
switch 1, switch 1 | open [A] B armed
gone A             | open [B] armed
deny A             | open [B] armed -> server.decide A deny)",
        "ask A, ask B, wait 1, press A, ..., wait 4, release, release"},
    {"what is not on the screen, in this form and place, cannot be decided by any road",
        R"(              | yes  open [B] receipt allowed -> server.decide A allow
blank         | no  open [A] B
move          | no  open [A] B
quietly blank | no  open [A] B armed
quietly move  | no  open [A] B armed
details       | no  open [A] B details
switch 1      | no  open A [B])",
        "watched, ask A, ask B, frame, wait 1, ..., press A, pressed, allow A"},
    {"a press within a double click of another, or of one before the arming, is none",
        R"(wait 1                    | yes  open [A] armed
wait 1, click             | yes  open [A] armed
wait 1, click, wait 0.399 | no  open [A] armed
wait 1, click, wait 0.4   | yes  open [A] armed
wait 0.2, click, wait 0.3 | no  open [A] armed)",
        "watched, ask A, frame, ..., press A, pressed"},
    {"a second request neither disarms nor reselects the one on show",
        R"(ask A, wait 1, ask B, ask C | open [A] B C armed
gone B, dismiss             | open [A] C armed
gone A                      | open [C] receipt unavailable
gone C                      | open receipt unavailable
wait 1.5                    | closed)"},
    {"switching goes in a circle and arms anew",
        R"(ask A, ask B, ask C, switch 1 | open A [B] C
switch 1, switch 1            | open [A] B C
switch -1, wait 1             | open A B [C] armed
select C                      | open A B [C] armed)"},
};

void checkDecisionUnderWay(Suite& suite)
{
    StartedModel started;
    started.fakes.server.onDecide = [&] {
        started.fakes.server.onDecide = {}; // Else a broken program would never come to an end.
        started.play("allow A");
    };
    suite.check("a second click while a decision is on its way is none",
        started.after("ask A, wait 1, deny A"), "open receipt denied -> server.decide A deny");
}

// The last barrier, should a button ever be armed by mistake. From a date of 0, so that the end of
// a guard can be met exactly.
void checkStateAlone(Suite& suite)
{
    const auto request = [](const char* id) {
        return ApprovalRequest{
            .id = id, .toolName = "Bash", .eventName = "PermissionRequest", .expiresAt = Date{50}};
    };
    NotchInteraction state;
    state.receive(request("A"), Date{0});
    state.receive(request("B"), Date{0});
    suite.check("the state allows a decision from the very end of the guard to the request's own",
        !state.canDecide("A", Date{0.449}) && state.canDecide("A", Date{0.45})
            && state.canDecide("A", Date{49.999}) && !state.canDecide("A", Date{50}));
    suite.check("the state allows no decision of a request that is not the one on show",
        !state.canDecide("B", Date{1}) && !state.canDecide("C", Date{1}));
    auto closed = state;
    closed.collapse();
    suite.check("the state allows no decision in a closed notch", !closed.canDecide("A", Date{1}));
    state.finish("A", NotchInteraction::Feedback::Kind::allowed, false);
    suite.check("the state allows no decision behind a receipt, and only a guard delay after it",
        !state.canDecide("A", Date{9}) && !state.canDecide("B", Date{9})
            && (state.dismissFeedback(Date{9}), !state.canDecide("B", Date{9.4}))
            && state.canDecide("B", Date{9.5}));
}

constexpr DelayCheck guards[] = {
    {"a request arms 0.46 seconds after it came", "ask A", 0.46, "open [A]", "open [A] armed"},
    {"a request in an open notch arms no sooner", "open, wait 1, ask A", 0.46, "open [A]",
        "open [A] armed"},
    {"a reopened request arms no sooner", "ask A, wait 1, close, open", 0.46, "open [A]",
        "open [A] armed"},
    {"opening what is open delays nothing", "ask A, wait 1, open", 0.01, "open [A]",
        "open [A] armed"},
    {"a selected request arms anew", "ask A, ask B, wait 1, select B", 0.46, "open A [B]",
        "open A [B] armed"},
    {"the next request arms anew from the end of the receipt",
        "ask A, ask B, wait 1, deny A, wait 1.05, dismiss", 0.46, "open [B]", "open [B] armed"},
    {"on a screen the guard counts from the later of arrival and sight", "watched, ask A, frame",
        0.46, "open [A]", "open [A] armed"},
    {"a request drawn late arms late", "watched, ask A, wait 3, frame", 0.45, "open [A]",
        "open [A] armed"},
    {"drawing it again delays nothing", "watched, ask A, wait 3, frame, wait 0.3, frame", 0.15,
        "open [A]", "open [A] armed"},
    {"a request that was out of sight arms anew", "watched, ask A, frame, wait 1, blank, frame",
        0.45, "open [A]", "open [A] armed"},
    {"a request whose buttons moved arms anew", "watched, ask A, frame, wait 1, move", 0.45,
        "open [A]", "open [A] armed"},
    {"a request that was out of sight unnoticed arms anew",
        "watched, ask A, wait 3, frame, wait 0.2, quietly blank, wait 0.3, frame", 0.45, "open [A]",
        "open [A] armed"},
    {"details on the screen arm anew", "watched, ask A, frame, wait 1, details, frame", 0.45,
        "open [A] details", "open [A] armed details"},
    {"another request on the screen arms anew",
        "watched, ask A, ask B, frame, wait 1, switch 1, wait 1, frame", 0.45, "open A [B]",
        "open A [B] armed"},
    {"a request reopened on the screen arms anew", "watched, ask A, frame, wait 1, close, open",
        0.46, "open [A]", "open [A] armed"},
    {"a demonstration drawn late arms late", "watched, demo hook, wait 3, frame", 0.45,
        "open [demo] trying", "open [demo] armed trying"},
};

// Only a wall clock that is set back can make a guard so long.
constexpr TraceCheck longGuards[] = {
    {"a guard of ten seconds starts no timer", R"(-9.5 | open [A] armed
-9.6 | open [A])",
        "ask A, clock ..., open, wait 20"},
};

constexpr TraceCheck receipts[] = {
    {"a receipt says what was sent for the person, once for each request",
        R"(ask A, wait 9, allow A    | open receipt allowed -> server.decide A allow
allow A, message          | 上次决定已发送 · 等待下一条请求  open receipt allowed
ask B, wait 9, deny B     | open receipt denied -> server.decide B deny
ask C, wait 9, handBack C | open receipt returned -> server.decide C passthrough
card D, wait 9, deny D    | open receipt denied native -> monitor.decide D deny)"},
    {"a receipt says that a decision came too late, and a card's host is opened",
        R"(refuse, ask A, wait 9, allow A | open receipt unavailable -> server.decide A allow
message                        | 上条请求已结束  open receipt unavailable
card B, wait 9, deny B         | open receipt unavailable native -> monitor.decide B deny, open quillmoss
noHost, card C, wait 9         | open [C] armed
deny C, message                | 上条请求已结束  open receipt unavailable native -> monitor.decide C deny)"},
    {"a failure stays in the notch until the person has decided above it",
        R"(refuse, noHost, card A, wait 9, deny A | open receipt unavailable native -> monitor.decide A deny
failure                                | 未在 Applications 找到 QuillMoss，请手动打开  open receipt unavailable native
ask B, wait 9, deny B                  | open receipt unavailable -> server.decide B deny
failure                                | none  open receipt unavailable)"},
    {"a receipt says that the hook on show has gone, or that its time is over",
        R"(wait 1  | open receipt unavailable
wait 49 | open receipt unavailable
wait 50 | open receipt expired)",
        "ask A, ..., gone A"},
    {"a request that goes unseen makes no receipt and disarms nothing",
        R"(ask A, ask B, wait 1, gone B | open [A] armed)"},
    {"a receipt of a demonstration is marked as one",
        R"(demo hook, wait 1, deny demo   | open receipt denied demo
dismiss, demo native, wait 1   | open [demo] armed trying
allow demo, message            | 演示结束 · 没有执行任何命令  open receipt allowed demo native)"},
};

constexpr DelayCheck receiptTimes[] = {
    {"a receipt with requests behind it lasts 1.1 seconds", "ask A, ask B, wait 1, deny A", 1.1,
        "open [B] receipt denied", "open [B]"},
    {"a last receipt lasts 1.8 seconds", "ask A, wait 1, deny A", 1.8, "open receipt denied",
        "open"},
    {"the end of an earlier receipt does not end a later one",
        "ask A, ask B, wait 1, deny A, dismiss, wait 0.5, deny B", 1.8, "open receipt denied",
        "open"},
    {"the copied mark lasts 1.5 seconds", "ask A, wait 1, copy", 1.5, "open [A] armed copied A",
        "open [A] armed"},
    {"copying again begins the mark anew", "ask A, wait 1, copy, wait 1, copy", 1.5,
        "open [A] armed copied A", "open [A] armed"},
};

constexpr DelayCheck closingTimes[] = {
    {"the notch closes 0.7 seconds after the pointer left", "open, enter, leave", 0.7, "open",
        "closed"},
    {"the notch closes 0.15 seconds after the last receipt", "ask A, wait 1, deny A, dismiss", 0.15,
        "open", "closed"},
};

constexpr TraceCheck closing[] = {
    {"the notch closes by itself only when nothing needs it at the end of the delay",
        R"(                        | closed
enter                   | open inside
ask A                   | open [A] armed
question                | open question Q ready
open                    | open
off autoCollapse        | open
off autoCollapse, leave | open)",
        "open, enter, leave, wait 0.6, ..., wait 1"},
    {"with automatic closing switched off no timer ever closes the notch",
        R"(ask A, wait 1, deny A, wait 60 | open -> server.decide A deny
enter, leave, wait 60          | open)",
        "off autoCollapse, open, ..."},
    {"a click outside closes the notch only when nothing needs it",
        R"(                 | closed
enter            | open inside
ask A            | open [A]
ask A, gone A    | open receipt unavailable
question         | open question Q
off autoCollapse | open)",
        "open, ..., clickOutside"},
};

constexpr DelayCheck hoverTimes[] = {
    {"a pointer that stays for 0.22 seconds opens the notch", "enter", 0.22, "closed inside",
        "open inside"},
};

constexpr TraceCheck hovers[] = {
    {"a pointer that passes through does not open the notch",
        R"(enter, wait 0.21, leave, wait 1 | closed)"},
    {"with hovering switched off no pointer opens the notch",
        R"(off hoverToExpand, enter, wait 9      | closed inside
leave, on hoverToExpand, enter, wait 1 | open inside)"},
    {"an explicit collapse is undone only by leaving and coming back, not by the same hover",
        R"(enter, wait 1, close, enter, wait 1 | closed inside blocked
leave, enter, wait 1                | open inside)"},
    {"a request opens a notch that was closed under the pointer",
        R"(enter, wait 1, close, ask A | open [A] inside)"},
    {"a late click outside does not lock hovering once the pointer is inside",
        R"(enter, clickOutside, wait 1 | open inside)"},
};

} // namespace

int checkInteraction(std::ostream& out)
{
    Suite suite(out, "UI");
    checkQuietStart(suite);
    suite.check(demonstrations);
    suite.check(details);
    suite.check(collapses);
    suite.check(clicks);
    checkDecisionUnderWay(suite);
    checkStateAlone(suite);
    suite.check(guards);
    suite.check(longGuards);
    suite.check(receipts);
    suite.check(receiptTimes);
    suite.check(closingTimes);
    suite.check(closing);
    suite.check(hoverTimes);
    suite.check(hovers);
    return suite.end("UI", "no real approvals submitted");
}

} // namespace notch
