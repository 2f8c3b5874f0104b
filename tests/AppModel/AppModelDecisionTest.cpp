// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppModel/AppModelTest.h"

#include "Foundation/Json.h"

namespace notch {
namespace {

TEST_F(AppModelTest, sendsADecisionOnceAndSaysHowItEnded)
{
    expectTrace(R"(ask A, wait 9, allow A    | open receipt allowed -> server.decide A allow
allow A, message          | 上次决定已发送 · 等待下一条请求  open receipt allowed
ask B, wait 9, deny B     | open receipt denied -> server.decide B deny
ask C, wait 9, handBack C | open receipt returned -> server.decide C passthrough
card D, wait 9, deny D    | open receipt denied native -> monitor.decide D deny
)");
    play("refuse");
    expectTrace(R"(ask A, wait 9, allow A | open receipt unavailable -> server.decide A allow
message                | 上条请求已结束  open receipt unavailable
card B, wait 9, deny B | open receipt unavailable native -> monitor.decide B deny, open quillmoss
noHost, card C, wait 9 | open [C] armed
deny C, message        | 上条请求已结束  open receipt unavailable native -> monitor.decide C deny
)");
}

TEST_F(AppModelTest, isDisarmedWhileADecisionIsOnItsWay)
{
    fakes.server.onDecide = [this] { play("allow A"); };
    expectTrace(R"(ask A, wait 1, deny A | open receipt denied -> server.decide A deny
)");
}

TEST_F(AppModelTest, ignoresAStaleButton)
{
    expectTrace(R"(ask A, ask B, allow A, press A, pressed     | no  open [A] B
wait 1, allow B, press B, pressed           | no  open [A] B armed
close, allow A, press A, pressed            | no  closed [A] B
open, wait 0.3, allow A, press A, pressed   | no  open [A] B
wait 1, open, allow A, press A, pressed     | no  open [A] B
wait 1, clock 60, allow A, press A, pressed | no  open [A] B armed
)");
}

TEST(AppModelDecision, takesAPressOnlyWithItsReleaseInTheSameArmedTime)
{
    expectEach("ask A, ask B, wait 1, press A, ..., wait 4, release, release",
        R"(                   | open [B] receipt allowed -> server.decide A allow
ask C              | open [B] C receipt allowed -> server.decide A allow
gone B             | open receipt allowed -> server.decide A allow
close, open        | open [A] B armed
open               | open [A] B armed
switch 1           | open A [B] armed
switch 1, switch 1 | open [A] B armed
gone A             | open [B] armed
deny A             | open [B] armed -> server.decide A deny
)");
}

TEST(AppModelDecision, refusesWhateverIsNotOnShowByAnyRoad)
{
    expectEach("watched, ask A, ask B, frame, wait 1, ..., press A, pressed, allow A",
        R"(              | yes  open [B] receipt allowed -> server.decide A allow
blank         | no  open [A] B
move          | no  open [A] B
quietly blank | no  open [A] B armed
quietly move  | no  open [A] B armed
details       | no  open [A] B details
switch 1      | no  open A [B]
)");
}

TEST(AppModelDecision, refusesAPressWithinADoubleClickOfAnyOtherOrFromBeforeTheArming)
{
    std::string burst;
    for (int click = 0; click < 200; ++click)
        burst += "click, wait 0.3, ";
    expectEach("watched, ask A, frame, ..., press A, pressed",
        R"(wait 1                      | yes  open [A] armed
wait 1, click               | yes  open [A] armed
wait 1, click, wait 0.399   | no  open [A] armed
wait 1, click, wait 0.4     | yes  open [A] armed
wait 0.2, click, wait 0.3   | no  open [A] armed
)");
    StartedModel model;
    const auto early = *model.fakes.display.inputTime();
    EXPECT_EQ(model.after("watched, ask A, frame, " + burst + "click, press A, pressed"),
        "no  open [A] armed");
    model.play("wait 1");
    EXPECT_FALSE(model.model.press("A", early)) << "it waited while the main thread stood still";
    const auto made = *model.fakes.display.inputTime();
    for (std::uint32_t later = 0; later < 100; ++later)
        model.model.notePress({made.milliseconds + later});
    EXPECT_FALSE(model.model.press("A", made)) << "what came before it is forgotten";
}

TEST_F(AppModelTest, leavesTheArmedRequestAloneWhenAnotherComesOrGoes)
{
    expectTrace(R"(ask A, wait 1, ask B, ask C | open [A] B C armed
gone B, dismiss             | open [A] C armed
gone A                      | open [C] receipt unavailable
gone C                      | open receipt unavailable
wait 1.5                    | closed
)");
}

TEST_F(AppModelTest, notesWhenAHookAskedLastButNotWhenACardAppeared)
{
    play("card A");
    EXPECT_FALSE(state().lastHookAt);
    play("wait 1, ask B");
    const auto asked = fakes.time.now();
    play("wait 1, ask B, card C");
    EXPECT_EQ(state().lastHookAt, asked);
}

TEST_F(AppModelTest, switchesInACircle)
{
    expectTrace(R"(ask A, ask B, ask C, switch 1 | open A [B] C
switch 1, switch 1            | open [A] B C
switch -1, wait 1             | open A B [C] armed
select C                      | open A B [C] armed
)");
}

TEST_F(AppModelTest, showsDemonstrationsThatReachNobody)
{
    expectTrace(R"(endDemo                        | closed
demo hook                      | open [demo] trying
wait 0.47, allow demo, message | 演示结束 · 没有执行任何命令  open receipt allowed demo
wait 1.96                      | closed
demo native, endDemo           | open receipt returned demo native
wait 1.5, demo hook, wait 0.47 | open [demo] armed trying
)");
}

TEST_F(AppModelTest, givesTheNotchToARealRequestDuringADemonstration)
{
    const auto late = fakes.hookRequest("late");
    play("demo hook, wait 60");
    const auto demo = state();
    fakes.report(fakes.server.callbacks.onRequest, late);
    EXPECT_EQ(state(), demo) << "a refused request must not end it";
    expectTrace(R"(ask A                     | open [A]
wait 1, endDemo           | open [A] armed
close, demo hook, wait 1  | open [A] armed
deny A                    | open receipt denied -> server.decide A deny
)");
}

TEST(DemoRequest, readsAsTheRealOnesDo)
{
    const auto hook = demoRequest(Demo::hook, Date{100});
    EXPECT_EQ(hook.toolInputJSON, "{\n  \"command\" : \"printf 'Hello from QuillMoss'\",\n"
                                  "  \"description\" : \"输出一条问候，检查终端环境\"\n}");
    EXPECT_TRUE(UUID::parse(hook.id));
    const auto native = demoRequest(Demo::native, Date{100});
    EXPECT_EQ(
        *Json::parse(native.toolInputJSON)->string("command"), "rm -f ./temporary-frames/*.png");
    EXPECT_NE(native.id, hook.id);
}

} // namespace
} // namespace notch
