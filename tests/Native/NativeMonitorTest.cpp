// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Monitor/NativeMonitor.h"

#include "Foundation/Json.h"
#include "Native/FakeHost.h"
#include "Native/Monitor/QuestionObservationFreshness.h"
#include "support/HostTrees.h"

#include <gmock/gmock.h>

#include <limits>

namespace notch {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Lines = std::vector<std::string>;

const auto& cardTree = groupedCardTree;
const std::string emptyTree = "Window #w @0,0,600,400 \"Chat\"\n";
const std::map<std::string, std::string> trees{{"card", cardTree}, {"no card", emptyTree},
    {"another card", changedText(cardTree, "build => dist")}, {"a question", questionTree},
    {"a control", emptyTree + "  Button #b \"上一题\""}};

// A monitor on a fake host. What it says and does is written down in order: "offer", "removal",
// "status TEXT", "question waiting", "timer on".
class NativeMonitorTest : public testing::Test {
protected:
    void start(bool approvals = true, bool questions = false)
    {
        monitor.start({.onRequest =
                              [this](const ApprovalRequest& request) {
                                  requests.push_back(request);
                                  say("offer");
                              },
                          .onRemoval =
                              [this](const std::string& id) {
                                  EXPECT_EQ(id, requests.back().id);
                                  say("removal");
                              },
                          .onStatus = [this](const std::string& text) { say("status " + text); },
                          .onQuestion = questions ? onQuestion() : NativeApprovals::OnQuestion()},
            {.approvals = approvals});
    }
    NativeApprovals::OnQuestion onQuestion()
    {
        return [this](const QuestionReminderState::Observation& observation, Uptime capturedAt) {
            captured = capturedAt;
            if (const auto* question = std::get_if<QuestionReminder>(&observation))
                flows.push_back(question->flowID);
            constexpr std::array names{"unavailable", "absent", "waiting"};
            say(std::string("question ") + names[observation.index()]);
        };
    }
    void say(const std::string& line)
    {
        said.push_back(line);
        if (line.starts_with(onceAfter) && !onceAfter.empty()) {
            onceAfter.clear();
            then();
        }
    }
    // Does that once, right after the line.
    void after(const std::string& line, std::function<void()> work)
    {
        onceAfter = line;
        then = std::move(work);
    }
    // Something that happens to the host (FakeHost::apply), or to the monitor: "stop", "approvals
    // off", "show TREE"; at some moment, too: "at CALL: CHANGE".
    void apply(const std::string& change)
    {
        if (const auto colon = change.find(": "); colon != change.npos)
            host.once(change.substr(3, colon - 3), [=, this] { apply(change.substr(colon + 2)); });
        else if (change.starts_with("show "))
            host.show(trees.at(change.substr(5)));
        else if (change == "stop")
            monitor.stop();
        else if (change == "approvals off")
            start(false);
        else
            host.apply(change);
    }
    // A fresh host and a fresh run, with the card on offer.
    void offerAnew()
    {
        host = FakeHost(cardTree);
        restart();
        tick();
        said.clear();
    }
    void restart()
    {
        monitor.stop();
        start();
    }
    Lines tick()
    {
        said.clear();
        monitor.tick();
        return std::exchange(said, {});
    }
    bool decide(Decision decision = Decision::allow)
    {
        return monitor.decide(requests.back().id, decision);
    }
    static std::string plain(std::string_view text) { return std::string(text); }
    static std::string same(std::string_view) { return "same"; }
    static std::string status(std::string_view text) { return "status " + std::string(text); }

    FakeHost host{cardTree};
    NativeMonitor monitor{
        {host, host, host, [this](std::string_view text) { return digest(text); }},
        [this](bool on) { say(on ? "timer on" : "timer off"); }};
    // The text itself, so that a fingerprint differs whenever what it is made from does.
    std::function<std::string(std::string_view)> digest = plain;
    std::vector<ApprovalRequest> requests;
    Lines said;
    Lines flows;
    Uptime captured;
    std::string onceAfter;
    std::function<void()> then;
};

TEST_F(NativeMonitorTest, offersTheCardInTheBackgroundOnceWithAllItSays)
{
    start();
    EXPECT_THAT(tick(), ElementsAre(status(monitorText::found), "offer"));
    EXPECT_THAT(tick(), IsEmpty());
    const auto& request = requests.at(0);
    EXPECT_EQ(request.sessionID, "Chat");
    EXPECT_EQ(request.toolName, "原生安全确认");
    EXPECT_EQ(request.eventName, "NativeApproval");
    EXPECT_EQ(request.source, "quillmoss");
    EXPECT_EQ(request.cwd, "");
    EXPECT_EQ(request.expiresAt.seconds, 1100 + 315360000.0);
    EXPECT_EQ(request.toolInputJSON, R"({
  "command" : "rm -rf build",
  "description" : "检测到批量删除操作：累计删除数量 12 项，阈值 10\n高风险命令，可能影响系统稳定性",
  "原生允许按钮" : "允许本次删除",
  "原生拒绝按钮" : "取消删除",
  "接入方式" : "辅助功能：仅点击这个原生确认卡，不是工具 Hook",
  "窗口" : "Chat"
})");
}

// What a pass over the host finds while a card is on offer.
TEST_F(NativeMonitorTest, takesTheCardBackOnTheFirstPassThatDoesNotConfirmIt)
{
    const std::vector<std::tuple<std::string, std::string_view, bool>> rows{
        {"gone", monitorText::notRunning, true},
        {"ended", monitorText::notRunning, true},
        {"twin", monitorText::severalInstances, false},
        {"front", monitorText::inFront, true},
        {"hidden", monitorText::hidden, false},
        {"untrusted", monitorText::needsAccess, true},
        {"fail attributes risk", monitorText::incomplete, false},
        {"show no card", monitorText::waiting, false},
        {"#risk => #risk -visible", monitorText::refusedCard, false},
        {"at attributes deny: front", monitorText::stateChanged, false},
    };
    for (const auto& [change, why, mayRest] : rows) {
        offerAnew();
        apply(change);
        EXPECT_THAT(tick(), ElementsAre("removal", status(why))) << change;
        EXPECT_EQ(monitor.mayRest(), mayRest) << change;
        host = FakeHost(cardTree);
        EXPECT_THAT(tick(), ElementsAre(status(monitorText::found), "offer")) << change;
    }
    apply("show no card");
    apply("at AXTitle w: front");
    EXPECT_THAT(tick(), ElementsAre("removal", status(monitorText::inFront)));
}

TEST_F(NativeMonitorTest, replacesACardByAnotherOrByAnEqualOneOfOtherElements)
{
    for (const auto* change : {"build => dist", "#allow => #allow2", "#card => #card2",
             "#risk => #risk2", "\"Chat\" => \"Talk\""}) {
        offerAnew();
        apply(change);
        EXPECT_THAT(tick(), ElementsAre("removal", "offer")) << change;
        EXPECT_NE(requests.back().id, requests[requests.size() - 2].id);
    }
    digest = same;
    host.show(cardTree);
    tick();
    for (const auto* button : {"#allow", "#deny"}) {
        host.show(changedText(cardTree, button + std::string(" => #other")));
        EXPECT_THAT(tick(), ElementsAre("removal", "offer")) << button;
    }
    host.show(cardTree);
    after("removal", [this] { apply("front"); });
    EXPECT_THAT(tick(), ElementsAre("removal")) << "nothing is found in front";
}

// The press

TEST_F(NativeMonitorTest, pressesTheChosenButtonOnceAfterTakingTheCardBack)
{
    for (const auto& [decision, button] :
        std::map<Decision, std::string>{{Decision::allow, "allow"}, {Decision::deny, "deny"}}) {
        offerAnew();
        EXPECT_TRUE(decide(decision));
        EXPECT_THAT(said, ElementsAre("removal", status(monitorText::pressed)));
        EXPECT_THAT(host.pressed, ElementsAre(button));
        said.clear();
        EXPECT_FALSE(decide(decision)) << "the same click again";
        EXPECT_THAT(said, IsEmpty());
        EXPECT_THAT(tick(), ElementsAre(status(monitorText::waiting))) << "not offered again";
        host.show(emptyTree);
        tick();
        host.show(cardTree);
        EXPECT_THAT(tick(), ElementsAre(status(monitorText::found), "offer")) << "a new card";
    }
}

TEST_F(NativeMonitorTest, handsACardBackWithoutTouchingTheHost)
{
    offerAnew();
    host.calls.clear();
    EXPECT_TRUE(decide(Decision::passthrough));
    EXPECT_THAT(said, ElementsAre("removal"));
    EXPECT_THAT(host.calls, IsEmpty());
    host.failing = {"attributes risk"};
    tick();
    host.failing.clear();
    EXPECT_THAT(tick(), ElementsAre(status(monitorText::waiting))) << "not offered again";
}

// Whatever is wrong at the click, or goes wrong after it: nothing is pressed, and it is said why.
TEST_F(NativeMonitorTest, pressesNothingUnlessAllIsAsItWasOffered)
{
    const std::vector<std::pair<std::string, std::string_view>> rows{
        {"untrusted", monitorText::accessLost},
        {"fail attributes risk", monitorText::cardChanged},
        {"front", monitorText::cardChanged},
        {"twin", monitorText::cardChanged},
        {"show no card", monitorText::cardChanged},
        {"show another card", monitorText::cardChanged},
        {"other pid", monitorText::cardChanged},
        {"#w => #w2", monitorText::cardChanged},
        {"#card => #card2", monitorText::cardChanged},
        {"#allow => #allow2", monitorText::cardChanged},
        {"#deny => #deny2", monitorText::cardChanged},
        {"#risk => #risk2", monitorText::cardChanged},
        {"12 项 => 13 项", monitorText::cardChanged},
        {"Chat => Talk", monitorText::cardChanged},
        // A further text in the group: it is another layout.
        {"before title StaticText @10,300,9,9 \"x\"", monitorText::cardChanged},
        {"at AXRole allow: AXRole allow = AXLink", monitorText::buttonUnavailable},
        {"at AXRole allow: AXEnabled allow = false", monitorText::buttonUnavailable},
        {"at AXRole allow: AXEnabled allow = -25200", monitorText::buttonUnavailable},
        {"at AXRole allow: AXHidden allow = true", monitorText::buttonUnavailable},
        {"at AXRole allow: AXTitle allow = 取消删除", monitorText::buttonUnavailable},
        {"at AXRole allow: AXDescription allow = 帮助", monitorText::buttonUnavailable},
        {"at AXRole allow: AXValue allow = 允许本次删除\u200B", monitorText::buttonUnavailable},
        {"at AXRole allow: no press", monitorText::buttonUnavailable},
        {"fail actions allow", monitorText::buttonUnavailable},
        {"at actions allow: front", monitorText::buttonUnavailable},
        {"fail press allow", monitorText::pressFailed},
        {"at attributes deny: approvals off", monitorText::buttonUnavailable},
        {"at attributes deny: stop", ""},
        {"at actions allow: stop", ""},
    };
    for (const auto& [change, why] : rows) {
        // All else is compared as well, should two cards ever share a fingerprint.
        digest = change == "Chat => Talk" ? plain : same;
        offerAnew();
        apply(change);
        EXPECT_FALSE(decide()) << change;
        EXPECT_THAT(host.pressed, IsEmpty()) << change;
        EXPECT_EQ(said.at(0), "removal") << change;
        EXPECT_EQ(said.back().starts_with("status ") ? said.back() : "status ", status(why))
            << change;
    }
}

TEST_F(NativeMonitorTest, aButtonThatIsReadForItsPressMayLackAttributes)
{
    offerAnew();
    host.once("AXRole allow", [this] {
        host.failing = {"AXHidden allow", "AXTitle allow", "AXValue allow", "AXDescription allow"};
    });
    EXPECT_TRUE(decide());
    EXPECT_THAT(host.pressed, ElementsAre("allow"));
}

TEST_F(NativeMonitorTest, looksNoFurtherForAClickThatIsOver)
{
    offerAnew();
    after("removal", [this] { restart(); });
    EXPECT_FALSE(decide(Decision::passthrough)) << "the run in which it was offered is over";
    tick();
    EXPECT_FALSE(monitor.decide("unknown", Decision::allow));
    host.once("attributes deny", [this] {
        host.calls.clear();
        restart();
    });
    decide();
    EXPECT_EQ(std::ranges::count(host.calls, "AXRole allow"), 0);
    start(false);
    EXPECT_FALSE(decide());
    monitor.stop();
    EXPECT_FALSE(decide());
}

// Nothing stale acts: a callback starts the monitor anew, and the rest of the pass is over.

TEST_F(NativeMonitorTest, endsAPassWhoseRunIsOver)
{
    struct Row {
        std::string change; // While a card is on offer.
        std::string at; // The line after which it is started anew.
        Lines said;
    };
    const std::vector<Row> rows{
        {"show another card", "question absent", {"question absent"}},
        {"show another card", "removal", {"question absent", "removal"}},
        {"show no card", "removal", {"question absent", "removal"}},
        {"untrusted", "question unavailable", {"question unavailable"}},
        {"untrusted", "removal", {"question unavailable", "removal"}},
        {"show a question", "removal", {"removal"}},
        {"show a question", "status", {"removal", status(monitorText::waiting)}},
    };
    for (const auto& row : rows) {
        offerAnew();
        start(true, true);
        apply(row.change);
        after(row.at, [this] { start(true, true); });
        EXPECT_EQ(tick(), row.said) << row.change << ", anew after " << row.at;
    }
}

TEST_F(NativeMonitorTest, doesNotOfferWhatItsOwnAnnouncementHasOvertaken)
{
    for (const auto* change : {"front", "stop", "approvals off"}) {
        host = FakeHost(cardTree);
        restart();
        after("status", [&] { apply(change); });
        EXPECT_THAT(tick(), testing::Not(testing::Contains("offer"))) << change;
    }
    restart();
    host = FakeHost(cardTree);
    after("status", [this] { start(); });
    EXPECT_THAT(tick(), testing::Not(testing::Contains("offer"))) << "started anew";
}

// Switches

TEST_F(NativeMonitorTest, startsItsTimerOnceAndEndsWithNothingOnOffer)
{
    start();
    start();
    EXPECT_THAT(said, ElementsAre("timer on"));
    tick();
    start(true, true);
    said.clear();
    monitor.stop();
    EXPECT_THAT(said, ElementsAre("timer off", "removal", "question unavailable"));
    host.calls.clear();
    EXPECT_THAT(tick(), IsEmpty());
    EXPECT_THAT(host.calls, IsEmpty());
    start();
    EXPECT_THAT(tick(), ElementsAre(status(monitorText::found), "offer")) << "the status anew, too";
    said.clear();
    start(true, true);
    after("removal", [this] { start(); });
    monitor.stop();
    EXPECT_THAT(said, ElementsAre("timer off", "removal", "timer on")) << "a new run hears nothing";
}

TEST_F(NativeMonitorTest, switchingApprovalsOffTakesTheCardBackAndForgetsWhatWasDecided)
{
    offerAnew();
    start(false);
    EXPECT_THAT(said, ElementsAre("removal"));
    EXPECT_THAT(tick(), ElementsAre(status(monitorText::waitingForQuestion)));
    start(true);
    tick();
    decide(Decision::passthrough);
    after("removal", [] {});
    start(false);
    start(true);
    EXPECT_THAT(tick(), ElementsAre("offer"));
    start(true, true);
    said.clear();
    after("removal", [this] { start(true, true); });
    start(false);
    EXPECT_THAT(said, ElementsAre("removal")) << "the newer start has the say";
}

// Questions

TEST_F(NativeMonitorTest, reportsAQuestionWithItsFlowAndTheMomentOfTheLook)
{
    host.show(questionTree);
    host.callTime = 0.001;
    start(true, true);
    const auto begun = host.time;
    EXPECT_THAT(tick(), ElementsAre(status(monitorText::waiting), "question waiting"));
    EXPECT_NEAR(captured.seconds, begun, 0.0015);
    host.show(changedText(changedText(questionTree, "\"2\" => \"3\""), "#next => #next -enabled"));
    tick();
    host.show(emptyTree);
    EXPECT_THAT(tick(), ElementsAre("question absent"));
    host.show(questionTree);
    tick();
    EXPECT_EQ(std::set(flows.begin(), flows.end()).size(), 1U)
        << "one flow, over its pages and one absence";
    apply("#skip => #skip2");
    tick();
    EXPECT_NE(flows.back(), flows.front()) << "other elements are another question";
    start(true, false);
    start(true, true);
    tick();
    EXPECT_NE(flows.back(), flows[flows.size() - 2]) << "a new subscriber begins anew";
}

TEST_F(NativeMonitorTest, reportsAQuestionOnlyFromTheBackgroundAndWhatItCanBeSureOf)
{
    const auto incomplete = status(monitorText::incomplete);
    const std::vector<std::pair<std::string, Lines>> rows{
        {"show no card", {"question absent", status(monitorText::waiting)}},
        {"show a control", {"question unavailable", status(monitorText::waiting)}},
        {"AXChildren w = other", {"question unavailable", status(monitorText::waiting)}},
        {"fail attributes page", {"question unavailable", incomplete}},
        {"at attributes skip: front", {"question unavailable", status(monitorText::inFront)}},
        {"untrusted", {"question unavailable", status(monitorText::needsAccess)}},
    };
    for (const auto& [change, lines] : rows) {
        host = FakeHost(questionTree);
        monitor.stop();
        start(true, true);
        apply(change);
        EXPECT_EQ(tick(), lines) << change;
    }
    host = FakeHost(questionTree);
    host.fallBackTo("w");
    EXPECT_THAT(tick(), ElementsAre(status(monitorText::questionInFallback), "question waiting"));
    host.show(emptyTree);
    EXPECT_THAT(tick(), ElementsAre("question unavailable", incomplete));
    host = FakeHost(questionTree);
    after("status", [this] { apply("front"); });
    EXPECT_THAT(tick(), ElementsAre(status(monitorText::waiting), "question unavailable"));
    host = FakeHost(questionTree);
    start(false, true);
    EXPECT_THAT(tick(), ElementsAre(status(monitorText::questionOnly), "question waiting"));
    host.show(emptyTree);
    EXPECT_THAT(tick(), ElementsAre("question absent", status(monitorText::waitingForQuestion)));
}

TEST_F(NativeMonitorTest, tellsAnOldSubscriberThatItHearsNoMore)
{
    start(true, true);
    said.clear();
    after("question unavailable", [this] { start(true, true); });
    start(true, false);
    EXPECT_THAT(said, ElementsAre("question unavailable"));
    host.show(emptyTree);
    EXPECT_THAT(tick(), ElementsAre("question absent", status(monitorText::waiting)))
        << "the newer start has the say";
}

TEST(QuestionObservationFreshness, acceptsAYoungSightingOfAnUnchangedBackground)
{
    const auto accepts = [](double captured, double now, double changed) {
        return QuestionObservationFreshness::acceptsWaiting(
            {captured}, {now}, {changed}, true, true, true);
    };
    constexpr auto infinite = std::numeric_limits<double>::infinity();
    EXPECT_TRUE(accepts(10, 11.5, 10));
    EXPECT_FALSE(accepts(10, 11.51, 10));
    EXPECT_FALSE(accepts(10, 11, 10.01));
    EXPECT_FALSE(accepts(10, 9.99, 9));
    EXPECT_FALSE(accepts(10, 11, -infinite));
    for (int off = 0; off < 3; ++off)
        EXPECT_FALSE(QuestionObservationFreshness::acceptsWaiting(
            {10}, {10}, {10}, off != 0, off != 1, off != 2));
}

} // namespace
} // namespace notch
