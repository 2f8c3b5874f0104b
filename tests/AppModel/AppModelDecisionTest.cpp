// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppModel/StartedModel.h"

#include "Foundation/Json.h"

namespace notch {
namespace {

using Kind = NotchInteraction::Feedback::Kind;

TEST_F(AppModelTest, sendsADecisionAndSaysHowItEnded)
{
    struct Row {
        const char* name;
        Demo kindOfRequest;
        bool taken;
        Decision decision;
        Kind receipt;
        const char* message;
        Calls calls;
    };
    const auto* const sent = "上次决定已发送 · 等待下一条请求";
    const auto* const ended = "上条请求已结束";
    using enum Decision;
    for (const auto& row : {
             Row{"allow", Demo::hook, true, allow, Kind::allowed, sent, {"server.decide A allow"}},
             Row{"deny", Demo::hook, true, deny, Kind::denied, sent, {"server.decide A deny"}},
             Row{"give back", Demo::hook, true, passthrough, Kind::returned, sent,
                 {"server.decide A passthrough"}},
             Row{"hook gone", Demo::hook, false, allow, Kind::unavailable, ended,
                 {"server.decide A allow"}},
             Row{"card", Demo::native, true, deny, Kind::denied, sent, {"monitor.decide A deny"}},
             Row{"card changed", Demo::native, false, allow, Kind::unavailable, ended,
                 {"monitor.decide A allow", "open quillmoss"}},
         }) {
        SCOPED_TRACE(row.name);
        StartedModel started;
        started.outside.server.hookWaits = started.outside.monitor.cardVerifies = row.taken;
        const bool native = row.kindOfRequest == Demo::native;
        native ? started.outside.card("A") : started.outside.request("A");
        started.pass(1);
        started.outside.calls.clear();
        const auto clicked = *started.interaction().current();
        started.model.decide(clicked, row.decision);
        started.model.decide(clicked, row.decision); // The same click again.
        std::erase_if(
            started.outside.calls, [](const auto& call) { return call.starts_with("reminders"); });
        EXPECT_EQ(started.outside.calls, row.calls);
        EXPECT_EQ(started.state().message, row.message);
        EXPECT_FALSE(started.state().actionReady);
        EXPECT_TRUE(started.interaction().requests().empty());
        ASSERT_TRUE(started.interaction().feedback());
        EXPECT_EQ(started.interaction().feedback()->kind, row.receipt);
        EXPECT_EQ(started.interaction().feedback()->isNative, native);
    }
}

TEST_F(AppModelTest, keepsTheOutcomesWordsWhenTheHostIsMissingToo)
{
    outside.workspace.installed.clear();
    outside.monitor.cardVerifies = false;
    outside.card("A");
    pass(1);
    decide(Decision::allow);
    EXPECT_EQ(state().message, "上条请求已结束");
}

TEST_F(AppModelTest, isDisarmedWhileADecisionIsOnItsWay)
{
    armedRequest("A");
    outside.server.onDecide = [&] { decide(Decision::allow); };
    decide(Decision::deny);
    EXPECT_EQ(outside.takeCalls("server.decide"), Calls{"server.decide A deny"});
}

TEST_F(AppModelTest, ignoresAStaleButton)
{
    outside.request("A");
    const auto first = *interaction().current();
    outside.request("B");
    const auto second = interaction().requests().back();
    const auto expectNothing = [&](const ApprovalRequest& request, const char* when) {
        model.decide(request, Decision::allow);
        EXPECT_TRUE(outside.takeCalls("server.decide").empty()) << when;
        EXPECT_FALSE(model.press(request.id)) << when;
    };
    expectNothing(first, "before the guard is over");
    pass(1);
    expectNothing(second, "not on screen");
    model.collapse();
    expectNothing(first, "collapsed");
    model.expand();
    pass(0.3);
    expectNothing(first, "opened a moment ago");
    pass(1);
    model.expand();
    expectNothing(first, "opened once more");
    pass(1);
    outside.time.setWallClock(Seconds{60});
    expectNothing(first, "run out, though nobody said so yet");
}

TEST_F(AppModelTest, countsAPressOnlyWithItsReleaseInTheSameArmedTime)
{
    struct Row {
        const char* between;
        bool decides;
        std::function<void(StartedModel&)> act;
    };
    const Row rows[] = {
        {"nothing", true, [](auto&) {}},
        {"a second request arrives", true, [](auto& it) { it.outside.request("C"); }},
        {"the request behind goes away", true, [](auto& it) { it.outside.remove("B"); }},
        {"closed and opened", false, [](auto& it) { it.model.collapse(), it.model.expand(); }},
        {"opened once more", false, [](auto& it) { it.model.expand(); }},
        {"switched to the next", false, [](auto& it) { it.model.selectAdjacent(1); }},
        {"switched away and back", false,
            [](auto& it) { it.model.selectAdjacent(1), it.model.selectAdjacent(1); }},
        {"the hook goes away", false, [](auto& it) { it.outside.remove("A"); }},
        {"decided otherwise", false, [](auto& it) { it.decide(Decision::deny); }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.between);
        StartedModel started;
        started.outside.request("A");
        started.armedRequest("B");
        const auto press = started.model.press("A");
        ASSERT_TRUE(press);
        row.act(started);
        started.pass(4); // Armed again, where it ever is.
        started.outside.calls.clear();
        started.model.release(*press, Decision::allow);
        started.model.release(*press, Decision::allow);
        EXPECT_EQ(started.outside.takeCalls("server.decide").size(), row.decides ? 1U : 0U);
    }
}

TEST_F(AppModelTest, leavesTheArmedRequestAloneWhenAnotherComesOrGoes)
{
    armedRequest("A");
    outside.request("B");
    outside.request("C");
    EXPECT_TRUE(state().actionReady);
    EXPECT_EQ(interaction().currentID(), "A");
    outside.remove("B");
    EXPECT_TRUE(state().actionReady);
    EXPECT_FALSE(interaction().feedback());
    outside.remove("A");
    EXPECT_FALSE(state().actionReady);
    EXPECT_EQ(interaction().feedback()->kind, Kind::unavailable);
    outside.remove("C");
    EXPECT_EQ(interaction().feedback()->kind, Kind::unavailable) << "no second receipt";
    pass(1.5);
    EXPECT_FALSE(interaction().feedback());
}

TEST_F(AppModelTest, notesWhenAHookAskedLastButNotWhenACardAppeared)
{
    outside.card("A");
    EXPECT_FALSE(state().lastHookAt);
    pass(1);
    outside.request("B");
    const auto asked = outside.time.now();
    EXPECT_EQ(state().lastHookAt, asked);
    pass(1);
    outside.request("B");
    outside.card("C");
    EXPECT_EQ(state().lastHookAt, asked);
}

TEST_F(AppModelTest, endsAReceiptEarlyAndArmsTheNextAnew)
{
    outside.request("A");
    armedRequest("B");
    model.dismissFeedback();
    EXPECT_TRUE(state().actionReady) << "there was no receipt to leave";
    decide(Decision::deny);
    model.dismissFeedback();
    EXPECT_FALSE(interaction().feedback());
    EXPECT_FALSE(state().actionReady);
    pass(0.47);
    EXPECT_TRUE(state().actionReady);
    decide(Decision::deny);
    pass(1.0); // The first receipt's time is over, the second's is not.
    EXPECT_TRUE(interaction().feedback());
}

TEST_F(AppModelTest, switchesInACircle)
{
    for (const auto* id : {"A", "B", "C"})
        outside.request(id);
    std::string seen;
    for (const int offset : {1, 1, 1, -1, -1}) {
        model.selectAdjacent(offset);
        seen += *interaction().currentID();
    }
    EXPECT_EQ(seen, "BCACB");
    pass(1);
    model.select("B");
    EXPECT_TRUE(state().actionReady) << "it is on screen already";
}

TEST_F(AppModelTest, showsDemonstrationsThatReachNobody)
{
    for (const auto demo : {Demo::hook, Demo::native}) {
        model.showDemo(demo);
        EXPECT_TRUE(state().isDemo);
        EXPECT_TRUE(state().isExpanded());
        EXPECT_EQ(interaction().current()->isNative(), demo == Demo::native);
        pass(0.47);
        outside.calls.clear();
        decide(Decision::allow);
        EXPECT_TRUE(outside.takeCalls("server").empty());
        EXPECT_TRUE(outside.takeCalls("monitor").empty());
        EXPECT_EQ(state().message, "演示结束 · 没有执行任何命令");
        EXPECT_TRUE(interaction().feedback()->isDemo);
        EXPECT_EQ(interaction().feedback()->kind, Kind::allowed);
        EXPECT_FALSE(state().isDemo);
        pass(1.8 + 0.16);
        EXPECT_FALSE(state().isExpanded());
    }
}

TEST_F(AppModelTest, showsADemonstrationInTheMiddleOfAReceipt)
{
    armedRequest("A");
    decide(Decision::deny);
    pass(1.5);
    model.showDemo(Demo::hook);
    EXPECT_FALSE(interaction().feedback());
    pass(0.47); // Past the end that the receipt would have had.
    EXPECT_TRUE(state().actionReady);
}

TEST_F(AppModelTest, endsADemonstrationWithoutADecision)
{
    model.endDemo();
    EXPECT_FALSE(interaction().feedback());
    model.showDemo(Demo::hook);
    model.endDemo();
    EXPECT_EQ(interaction().feedback()->kind, Kind::returned);
    EXPECT_TRUE(interaction().feedback()->isDemo);
    EXPECT_FALSE(state().isDemo);
    armedRequest("A");
    model.endDemo();
    EXPECT_EQ(interaction().currentID(), "A");
}

TEST_F(AppModelTest, givesTheNotchToARealRequestDuringADemonstration)
{
    model.showDemo(Demo::hook);
    pass(1);
    const auto demo = state();
    auto lapsed = outside.hookRequest("late");
    lapsed.expiresAt = outside.time.now();
    outside.server.callbacks.onRequest(lapsed);
    pass(0);
    EXPECT_EQ(state(), demo) << "a refused request must not end it";
    outside.request("A");
    EXPECT_FALSE(state().isDemo);
    EXPECT_EQ(interaction().requests().size(), 1U);
    EXPECT_FALSE(state().actionReady);
    pass(0.47);
    decide(Decision::deny);
    EXPECT_EQ(outside.takeCalls("server.decide"), Calls{"server.decide A deny"});
}

TEST_F(AppModelTest, onlyOpensForADemonstrationWhileARequestWaits)
{
    armedRequest("A");
    model.collapse();
    model.showDemo(Demo::hook);
    EXPECT_FALSE(state().isDemo);
    EXPECT_TRUE(state().isExpanded());
    EXPECT_EQ(interaction().requests().size(), 1U);
}

TEST(DemoRequest, readsAsTheRealOnesDo)
{
    const auto hook = demoRequest(Demo::hook, Date{100});
    EXPECT_EQ(hook.toolInputJSON, "{\n  \"command\" : \"printf 'Hello from QuillMoss'\",\n"
                                  "  \"description\" : \"输出一条问候，检查终端环境\"\n}");
    EXPECT_EQ(hook.expiresAt, Date{3700});
    EXPECT_TRUE(UUID::parse(hook.id));
    const auto native = demoRequest(Demo::native, Date{100});
    EXPECT_EQ(
        *Json::parse(native.toolInputJSON)->string("command"), "rm -f ./temporary-frames/*.png");
    EXPECT_TRUE(native.isNative());
    EXPECT_NE(native.id, hook.id);
}

} // namespace
} // namespace notch
