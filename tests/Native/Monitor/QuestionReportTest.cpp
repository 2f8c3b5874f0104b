// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Monitor/MonitorOnFakeHost.h"
#include "Native/Monitor/QuestionObservationFreshness.h"

#include <limits>

namespace notch {
namespace {

using testing::ElementsAre;
using QuestionReport = MonitorOnFakeHost;

TEST_F(QuestionReport, reportsAQuestionWithItsFlowAndTheMomentOfTheLook)
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

TEST_F(QuestionReport, reportsAQuestionOnlyFromTheBackgroundAndWhatItCanBeSureOf)
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

TEST_F(QuestionReport, tellsAnOldSubscriberThatItHearsNoMore)
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
