// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppModel/AppModelTest.h"

#include "Foundation/Json.h"

namespace notch {
namespace {

TEST(AppModelDecision, refusesAPressAfterABurstOfOthersOrFromBeforeTheArming)
{
    std::string burst;
    for (int click = 0; click < 200; ++click)
        burst += "click, wait 0.3, ";
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

TEST_F(AppModelTest, notesWhenAHookAskedLastButNotWhenACardAppeared)
{
    play("card A");
    EXPECT_FALSE(state().lastHookAt);
    play("wait 1, ask B");
    const auto asked = fakes.time.now();
    play("wait 1, ask B, card C");
    EXPECT_EQ(state().lastHookAt, asked);
}

TEST_F(AppModelTest, keepsADemonstrationWhenARequestIsRefused)
{
    const auto late = fakes.hookRequest("late");
    play("demo hook, wait 60");
    const auto demo = state();
    fakes.report(fakes.server.callbacks.onRequest, late);
    EXPECT_EQ(state(), demo);
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
