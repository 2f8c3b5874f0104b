// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppModel/StartedModel.h"

#include <functional>

namespace notch {
namespace {

// Each delay, a millisecond before its end and a millisecond after.
struct Delay {
    const char* name;
    double seconds;
    std::function<void(StartedModel&)> begin;
    std::function<bool(const AppModelState&)> isOver;
};

bool isArmed(const AppModelState& state)
{
    return state.actionReady;
}
bool isOpen(const AppModelState& state)
{
    return state.isExpanded();
}
bool isClosed(const AppModelState& state)
{
    return !state.isExpanded();
}
bool showsNoReceipt(const AppModelState& state)
{
    return !state.interaction.feedback();
}

void endAReceipt(StartedModel& it)
{
    it.outside.request("A");
    it.armedRequest("B");
    it.decide(Decision::deny);
    it.pass(1.05);
    EXPECT_TRUE(it.interaction().feedback());
    it.model.dismissFeedback();
}

const Delay delays[] = {
    {"arming of a request", 0.46, [](auto& it) { it.outside.request("A"); }, isArmed},
    {"arming in a notch that stood open", 0.46,
        [](auto& it) {
            it.model.expand();
            it.pass(1);
            it.outside.request("A");
        },
        isArmed},
    {"arming after opening again", 0.46,
        [](auto& it) {
            it.armedRequest("A");
            it.model.collapse();
            it.model.expand();
        },
        isArmed},
    {"arming of an open notch is over at once", 0.01,
        [](auto& it) {
            it.armedRequest("A");
            it.model.expand();
        },
        isArmed},
    {"arming after switching", 0.46,
        [](auto& it) {
            it.outside.request("A");
            it.armedRequest("B");
            it.model.select("B");
        },
        isArmed},
    {"arming after a receipt", 0.46, endAReceipt, isArmed},
    {"hover", 0.22, [](auto& it) { it.model.setPointerInside(true); }, isOpen},
    {"collapse after the pointer has left", 0.7,
        [](auto& it) {
            it.model.expand();
            it.model.setPointerInside(true);
            it.model.setPointerInside(false);
        },
        isClosed},
    {"receipt with more waiting", 1.1,
        [](auto& it) {
            it.outside.request("A");
            it.armedRequest("B");
            it.decide(Decision::deny);
        },
        showsNoReceipt},
    {"receipt over an empty queue", 1.8,
        [](auto& it) {
            it.armedRequest("A");
            it.decide(Decision::deny);
        },
        showsNoReceipt},
    {"collapse after a receipt", 0.15,
        [](auto& it) {
            it.armedRequest("A");
            it.decide(Decision::deny);
            it.model.dismissFeedback();
        },
        isClosed},
    {"copied mark", 1.5,
        [](auto& it) {
            it.armedRequest("A");
            it.model.copyRequest(*it.interaction().current());
        },
        [](const AppModelState& state) { return !state.copiedRequestID; }},
    {"copied mark, copied again", 1.5,
        [](auto& it) {
            it.armedRequest("A");
            it.model.copyRequest(*it.interaction().current());
            it.pass(1);
            it.model.copyRequest(*it.interaction().current());
        },
        [](const AppModelState& state) { return !state.copiedRequestID; }},
};

TEST(AppModelDelays, endNeitherEarlyNorLate)
{
    for (const auto& delay : delays) {
        SCOPED_TRACE(delay.name);
        StartedModel started;
        delay.begin(started);
        EXPECT_FALSE(delay.isOver(started.state()));
        started.pass(delay.seconds - 0.001);
        EXPECT_FALSE(delay.isOver(started.state()));
        started.pass(0.002);
        EXPECT_TRUE(delay.isOver(started.state()));
    }
}

TEST(AppModelDelays, startNoTimerForAGuardOfTenSeconds)
{
    // Only a wall clock that is set back can make a guard so long.
    for (const auto& [back, arms] : {std::pair{9.5, true}, std::pair{9.6, false}}) {
        StartedModel started;
        started.outside.request("A");
        started.outside.time.setWallClock(Seconds{-back});
        started.model.expand();
        started.pass(20);
        EXPECT_EQ(started.state().actionReady, arms) << back;
    }
}

TEST(AppModelDelays, leaveADemonstrationWaitingForAnHour)
{
    StartedModel started;
    started.model.showDemo(Demo::hook);
    started.pass(3599.9);
    EXPECT_TRUE(started.model.press(*started.interaction().currentID()));
    started.pass(0.1);
    EXPECT_FALSE(started.model.press(*started.interaction().currentID()));
}

} // namespace
} // namespace notch
