// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Monitor/NativeMonitor.h"

#include "Foundation/Json.h"
#include "Native/FakeHost.h"
#include "Native/Monitor/QuestionObservationFreshness.h"

#include <gmock/gmock.h>

#include <limits>

namespace notch {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Lines = std::vector<std::string>;

const std::string cardTree = R"(
Window #w @0,0,800,600 "Chat"
  Group #card @0,0,800,600
    StaticText #title @10,10,90,20 "检测到批量删除操作：累计删除数量 12 项，阈值 10"
    StaticText #risk @110,10,90,20 "高风险命令，可能影响系统稳定性"
    StaticText #command @10,40,190,20 "rm -rf build"
    Button #allow @10,70,190,20 "允许本次删除"
    Button #deny @10,94,190,20 "取消删除"
)";
const std::string questionTree = R"(
Window #w @0,0,2000,2000
  Group #page @0,0,600,800
    StaticText #title @20,20,300,24 "哪一个？"
    Button #previous @340,16,32,32 "上一题"
      Image @352,28,8,8
    StaticText @376,22,20,20 "2"
    StaticText @400,22,10,20 "/"
    StaticText @414,22,20,20 "3"
    Button #next @440,16,32,32 "下一题"
      Image @452,28,8,8
    Button #skip @478,16,32,32 "全部跳过"
      Image @490,28,8,8
    Button @16,64,560,40 "1 本地"
      StaticText @24,74,16,20 "1"
      StaticText @48,74,400,20 "本地"
      Image @550,74,16,20
)";
const std::string emptyTree = "Window #w @0,0,800,600\n";
const std::string refusedTree = emptyTree + "  Button #allow @9,9,9,9 \"允许本次删除\"\n";

std::string replaced(std::string text, const std::string& from, const std::string& to)
{
    return text.replace(text.find(from), from.size(), to);
}
const auto otherCard = replaced(cardTree, "build", "dist");

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
    // Does that once, just before the host answers.
    void during(const std::string& call, std::function<void()> work)
    {
        host.before = [this, call, work = std::move(work)](const std::string& made) {
            if (made != call)
                return;
            const auto now = work;
            host.before = {};
            now();
        };
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
    // A card is on offer, and nothing has been said since.
    void offerCard()
    {
        start();
        monitor.tick();
        said.clear();
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
    struct Row {
        std::string name;
        std::function<void()> change;
        std::string_view status;
    };
    const std::vector<Row> rows{
        {"no host", [this] { host.hosts.clear(); }, monitorText::notRunning},
        {"a host that has ended", [this] { host.hosts[0].isTerminated = true; },
            monitorText::notRunning},
        {"two hosts", [this] { host.hosts.push_back({.pid = 8}); }, monitorText::severalInstances},
        {"in front", [this] { host.hosts[0].isActive = true; }, monitorText::inFront},
        {"hidden", [this] { host.hosts[0].isHidden = true; }, monitorText::hidden},
        {"no permission", [this] { host.trusted = false; }, monitorText::needsAccess},
        {"an incomplete scan", [this] { host.failing = {"attributes risk"}; },
            monitorText::incomplete},
        {"no card", [this] { host.show(emptyTree); }, monitorText::waiting},
        {"a card that breaks a rule", [this] { host.show(cardTree, "risk-visible"); },
            monitorText::refusedCard},
        {"to the front during the scan",
            [this] { during("attributes deny", [this] { host.hosts[0].isActive = true; }); },
            monitorText::stateChanged},
        {"to the front during the scan of no card",
            [this] {
                host.show(emptyTree);
                during("AXTitle w", [this] { host.hosts[0].isActive = true; });
            },
            monitorText::inFront},
    };
    for (const auto& row : rows) {
        host = FakeHost(cardTree);
        restart();
        tick();
        row.change();
        EXPECT_THAT(tick(), ElementsAre("removal", status(row.status))) << row.name;
        const bool atRest = row.status == monitorText::notRunning
                         || (row.status == monitorText::inFront && !row.name.ends_with("card"));
        EXPECT_EQ(monitor.mayRest(), atRest) << row.name;
        host = FakeHost(cardTree);
        EXPECT_THAT(tick(), ElementsAre(status(monitorText::found), "offer")) << row.name;
    }
}

TEST_F(NativeMonitorTest, replacesACardByAnotherOrByAnEqualOneOfOtherElements)
{
    for (const auto& tree :
        {otherCard, replaced(cardTree, "#allow", "#allow2"), replaced(cardTree, "#card", "#card2"),
            replaced(cardTree, "#risk", "#risk2"), replaced(cardTree, "\"Chat\"", "\"Talk\"")}) {
        host = FakeHost(cardTree);
        restart();
        tick();
        host.show(tree);
        EXPECT_THAT(tick(), ElementsAre("removal", "offer")) << tree;
        EXPECT_NE(requests.back().id, requests[requests.size() - 2].id);
    }
    digest = same;
    host.show(cardTree);
    tick();
    for (const auto* button : {"#allow", "#deny"}) {
        host.show(replaced(cardTree, button, "#other"));
        EXPECT_THAT(tick(), ElementsAre("removal", "offer")) << button;
    }
    host.show(cardTree);
    after("removal", [this] { host.hosts[0].isActive = true; });
    EXPECT_THAT(tick(), ElementsAre("removal")) << "nothing is found in front";
}

// The press

TEST_F(NativeMonitorTest, pressesTheChosenButtonOnceAfterTakingTheCardBack)
{
    for (const auto& [decision, button] :
        std::map<Decision, std::string>{{Decision::allow, "allow"}, {Decision::deny, "deny"}}) {
        host = FakeHost(cardTree);
        restart();
        tick();
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
    offerCard();
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
    struct Row {
        std::string name;
        std::function<void()> change;
        std::string_view status; // Empty: none.
    };
    const auto shows = [this](
                           const std::string& tree) { return [this, tree] { host.show(tree); }; };
    const auto odd = [this](const std::string& what, const AXValue& value) {
        return [=, this] { during("AXRole allow", [=, this] { host.odd[what] = value; }); };
    };
    const auto gone = [this](const std::string& from, const std::string& to) {
        return [=, this] { host.show(replaced(cardTree, from, to)); };
    };
    const std::vector<Row> rows{
        {"permission lost", [this] { host.trusted = false; }, monitorText::accessLost},
        {"incomplete", [this] { host.failing = {"attributes risk"}; }, monitorText::cardChanged},
        {"in front", [this] { host.hosts[0].isActive = true; }, monitorText::cardChanged},
        {"a second host", [this] { host.hosts.push_back({.pid = 8}); }, monitorText::cardChanged},
        {"no card", shows(emptyTree), monitorText::cardChanged},
        {"another command", shows(otherCard), monitorText::cardChanged},
        {"another process", [this] { host.hosts[0].pid = 8; }, monitorText::cardChanged},
        {"another window", gone("#w", "#w2"), monitorText::cardChanged},
        {"another container", gone("#card", "#card2"), monitorText::cardChanged},
        {"another allow button", gone("#allow", "#allow2"), monitorText::cardChanged},
        {"another deny button", gone("#deny", "#deny2"), monitorText::cardChanged},
        {"another element of the context", gone("#risk", "#risk2"), monitorText::cardChanged},
        {"another title", gone("12 项", "13 项"), monitorText::cardChanged},
        {"another layout",
            gone(
                "    StaticText #title", "    StaticText @10,200,9,9 \"x\"\n    StaticText #title"),
            monitorText::cardChanged},
        {"another window title", gone("Chat", "Talk"), monitorText::cardChanged},
        {"no longer a button", odd("AXRole allow", std::string("AXLink")),
            monitorText::buttonUnavailable},
        {"disabled", odd("AXEnabled allow", false), monitorText::buttonUnavailable},
        {"enabled is unknown", odd("AXEnabled allow", AXError{}), monitorText::buttonUnavailable},
        {"hidden", odd("AXHidden allow", true), monitorText::buttonUnavailable},
        {"the other label", odd("AXTitle allow", std::string("取消删除")),
            monitorText::buttonUnavailable},
        {"a further text", odd("AXDescription allow", std::string("帮助")),
            monitorText::buttonUnavailable},
        {"a hidden character", odd("AXValue allow", std::string("允许本次删除\u200B")),
            monitorText::buttonUnavailable},
        {"no press on offer", [this] { host.actions = {"AXShowMenu"}; },
            monitorText::buttonUnavailable},
        {"no actions", [this] { host.failing = {"actions allow"}; },
            monitorText::buttonUnavailable},
        {"to the front at the last look",
            [this] { during("actions allow", [this] { host.hosts[0].isActive = true; }); },
            monitorText::buttonUnavailable},
        {"the press fails", [this] { host.failing = {"press allow"}; }, monitorText::pressFailed},
        {"switched off during the scan",
            [this] { during("attributes deny", [this] { start(false); }); },
            monitorText::buttonUnavailable},
        {"stopped during the scan",
            [this] { during("attributes deny", [this] { monitor.stop(); }); }, ""},
        {"stopped at the last look",
            [this] { during("actions allow", [this] { monitor.stop(); }); }, ""},
        {"stopped by the removal", [this] { after("removal", [this] { monitor.stop(); }); }, ""},
    };
    for (const auto& row : rows) {
        host = FakeHost(cardTree);
        digest = row.name == "another window title" ? plain : same;
        restart();
        tick();
        said.clear();
        row.change();
        EXPECT_FALSE(decide()) << row.name;
        EXPECT_THAT(host.pressed, IsEmpty()) << row.name;
        EXPECT_EQ(said.at(0), "removal") << row.name;
        EXPECT_EQ(said.back().starts_with("status ") ? said.back() : "status ", status(row.status))
            << row.name;
    }
}

TEST_F(NativeMonitorTest, aButtonThatIsReadForItsPressMayLackAttributes)
{
    offerCard();
    during("AXRole allow", [this] {
        host.failing = {"AXHidden allow", "AXTitle allow", "AXValue allow", "AXDescription allow"};
    });
    EXPECT_TRUE(decide());
    EXPECT_THAT(host.pressed, ElementsAre("allow"));
}

TEST_F(NativeMonitorTest, looksNoFurtherForAClickThatIsOver)
{
    offerCard();
    after("removal", [this] { restart(); });
    EXPECT_FALSE(decide(Decision::passthrough)) << "the run in which it was offered is over";
    tick();
    EXPECT_FALSE(monitor.decide("unknown", Decision::allow));
    during("attributes deny", [this] {
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
    const auto again = [this] { start(true, true); };
    struct Row {
        std::string name;
        std::string at; // The line after which it is started anew.
        std::function<void()> arrange; // While a card is on offer.
        Lines said;
    };
    const std::vector<Row> rows{
        {"another card", "question absent", [this] { host.show(otherCard); }, {"question absent"}},
        {"another card, taken back", "removal", [this] { host.show(otherCard); },
            {"question absent", "removal"}},
        {"no card, taken back", "removal", [this] { host.show(emptyTree); },
            {"question absent", "removal"}},
        {"no permission", "question unavailable", [this] { host.trusted = false; },
            {"question unavailable"}},
        {"no permission, taken back", "removal", [this] { host.trusted = false; },
            {"question unavailable", "removal"}},
        {"a question, taken back", "removal", [this] { host.show(questionTree); }, {"removal"}},
        {"a question, said", "status", [this] { host.show(questionTree); },
            {"removal", status(monitorText::waiting)}},
    };
    for (const auto& row : rows) {
        host = FakeHost(cardTree);
        monitor.stop();
        start(true, true);
        tick();
        row.arrange();
        after(row.at, again);
        EXPECT_EQ(tick(), row.said) << row.name;
    }
}

TEST_F(NativeMonitorTest, doesNotOfferWhatItsOwnAnnouncementHasOvertaken)
{
    const std::vector<std::pair<std::string, std::function<void()>>> rows{
        {"started anew", [this] { start(); }},
        {"stopped", [this] { monitor.stop(); }},
        {"in front", [this] { host.hosts[0].isActive = true; }},
    };
    for (const auto& [name, change] : rows) {
        host = FakeHost(cardTree);
        restart();
        after("status", change);
        const auto lines = tick();
        EXPECT_EQ(std::ranges::count(lines, "offer"), 0) << name;
    }
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
    offerCard();
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
    host.show(replaced(questionTree, "\"2\"", "\"3\""), "next-enabled");
    tick();
    host.show(emptyTree);
    EXPECT_THAT(tick(), ElementsAre("question absent"));
    host.show(questionTree);
    tick();
    EXPECT_EQ(std::set(flows.begin(), flows.end()).size(), 1U)
        << "one flow, over its pages and one absence";
    host.show(replaced(questionTree, "#skip", "#skip2"));
    tick();
    EXPECT_NE(flows.back(), flows.front()) << "other elements are another question";
    start(true, false);
    start(true, true);
    tick();
    EXPECT_NE(flows.back(), flows[flows.size() - 2]) << "a new subscriber begins anew";
}

TEST_F(NativeMonitorTest, reportsAQuestionOnlyFromTheBackgroundAndWhatItCanBeSureOf)
{
    const auto fallback = [this] {
        const AXElement own{"host", "w"};
        host.odd = {{"AXWindows application", AXElements{}}, {"AXMainWindow application", own},
            {"AXFocusedWindow application", own}};
    };
    struct Row {
        std::string name;
        std::function<void()> arrange;
        Lines said;
    };
    const auto incomplete = status(monitorText::incomplete);
    const std::vector<Row> rows{
        {"no question", [this] { host.show(emptyTree); },
            {"question absent", status(monitorText::waiting)}},
        {"a control alone", [this] { host.show(emptyTree + "  Button #b \"上一题\""); },
            {"question unavailable", status(monitorText::waiting)}},
        {"in doubt", [this] { host.odd["AXChildren w"] = AXOther{}; },
            {"question unavailable", status(monitorText::waiting)}},
        {"incomplete", [this] { host.failing = {"attributes page"}; },
            {"question unavailable", incomplete}},
        {"in the fallback", fallback,
            {status(monitorText::questionInFallback), "question waiting"}},
        {"no question in the fallback",
            [this, fallback] {
                host.show(emptyTree);
                fallback();
            },
            {"question unavailable", incomplete}},
        {"to the front during the scan",
            [this] { during("attributes skip", [this] { host.hosts[0].isActive = true; }); },
            {"question unavailable", status(monitorText::inFront)}},
        {"to the front before the report",
            [this] { after("status", [this] { host.hosts[0].isActive = true; }); },
            {status(monitorText::waiting), "question unavailable"}},
        {"no permission", [this] { host.trusted = false; },
            {"question unavailable", status(monitorText::needsAccess)}},
    };
    for (const auto& row : rows) {
        host = FakeHost(questionTree);
        monitor.stop();
        start(true, true);
        row.arrange();
        EXPECT_EQ(tick(), row.said) << row.name;
    }
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
