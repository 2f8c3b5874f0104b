// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Monitor/MonitorOnFakeHost.h"

namespace notch {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using CardOffer = MonitorOnFakeHost;

TEST_F(CardOffer, offersTheCardInTheBackgroundOnceWithAllItSays)
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
TEST_F(CardOffer, takesTheCardBackOnTheFirstPassThatDoesNotConfirmIt)
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

TEST_F(CardOffer, replacesACardByAnotherOrByAnEqualOneOfOtherElements)
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

// Nothing stale acts: a callback starts the monitor anew, and the rest of the pass is over.

TEST_F(CardOffer, endsAPassWhoseRunIsOver)
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

TEST_F(CardOffer, doesNotOfferWhatItsOwnAnnouncementHasOvertaken)
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

TEST_F(CardOffer, startsItsTimerOnceAndEndsWithNothingOnOffer)
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

TEST_F(CardOffer, switchingApprovalsOffTakesTheCardBackAndForgetsWhatWasDecided)
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

} // namespace
} // namespace notch
