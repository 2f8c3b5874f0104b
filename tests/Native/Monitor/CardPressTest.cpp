// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Monitor/MonitorOnFakeHost.h"

namespace notch {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using CardPress = MonitorOnFakeHost;

// At the look at the button after the scan, of which it is the last element but one.
const std::string lastLook = "at attributes deny: at attributes allow: ";

TEST_F(CardPress, pressesTheChosenButtonOnceAfterTakingTheCardBack)
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

TEST_F(CardPress, handsACardBackWithoutTouchingTheHost)
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
TEST_F(CardPress, pressesNothingUnlessAllIsAsItWasOffered)
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
        {lastLook + "AXRole allow = AXLink", monitorText::buttonUnavailable},
        {lastLook + "AXEnabled allow = false", monitorText::buttonUnavailable},
        {lastLook + "AXEnabled allow = -25200", monitorText::buttonUnavailable},
        {lastLook + "AXHidden allow = true", monitorText::buttonUnavailable},
        {lastLook + "AXTitle allow = 取消删除", monitorText::buttonUnavailable},
        {lastLook + "AXDescription allow = 帮助", monitorText::buttonUnavailable},
        {lastLook + "AXValue allow = 允许本次删除\u200B", monitorText::buttonUnavailable},
        {lastLook + "no press", monitorText::buttonUnavailable},
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

TEST_F(CardPress, aButtonThatIsReadForItsPressMayLackAttributes)
{
    offerAnew();
    for (const auto* name : {"AXHidden", "AXTitle", "AXValue", "AXDescription"})
        apply(lastLook + name + " allow = -25200");
    EXPECT_TRUE(decide());
    EXPECT_THAT(host.pressed, ElementsAre("allow"));
}

TEST_F(CardPress, looksNoFurtherForAClickThatIsOver)
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
    EXPECT_EQ(std::ranges::count(host.calls, "attributes allow"), 0);
    start(false);
    EXPECT_FALSE(decide());
    monitor.stop();
    EXPECT_FALSE(decide());
}

} // namespace
} // namespace notch
