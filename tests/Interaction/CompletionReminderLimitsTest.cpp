// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Interaction/CompletionReminderState.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace notch {
namespace {

class CompletionReminderLimits : public testing::Test {
protected:
    void observe(CompletionEvent::Kind kind, const std::string& session,
        const std::string& generation, Date now = {})
    {
        CompletionEvent event{.id = UUID::random().text(),
            .sessionID = session,
            .generationID = generation,
            .kind = kind,
            .observedAt = now};
        if (kind == CompletionEvent::Kind::ended)
            event.reason = CompletionEvent::Reason::completed;
        state_.observe(event, 7, true, true, now);
    }

    void pair(const std::string& session, const std::string& generation, Date now = {})
    {
        observe(CompletionEvent::Kind::started, session, generation, now);
        observe(CompletionEvent::Kind::ended, session, generation, now);
    }

    CompletionReminderState state_;
};

TEST_F(CompletionReminderLimits, tracksNoMoreThan256Sessions)
{
    for (int session = 0; session < 255; ++session)
        observe(CompletionEvent::Kind::started, std::to_string(session), "1");
    EXPECT_FALSE(state_.trackingLimited());
    observe(CompletionEvent::Kind::started, "255", "1");
    EXPECT_TRUE(state_.trackingLimited());

    pair("256", "1");
    EXPECT_EQ(state_.trackedSessionCount(), 256U);
    EXPECT_EQ(state_.queuedCount(), 0U);
    pair("0", "2"); // A session that is tracked already goes on.
    EXPECT_EQ(state_.queuedCount(), 1U);

    state_.reset();
    pair("256", "1");
    EXPECT_EQ(state_.queuedCount(), 1U);
}

TEST_F(CompletionReminderLimits, remembersNoMoreThan4096Starts)
{
    for (int generation = 0; generation < 4095; ++generation)
        observe(CompletionEvent::Kind::started, "a", std::to_string(generation));
    EXPECT_FALSE(state_.trackingLimited());
    pair("a", "4095");
    EXPECT_TRUE(state_.trackingLimited());
    EXPECT_EQ(state_.queuedCount(), 1U);

    pair("b", "1");
    pair("a", "4096");
    EXPECT_EQ(state_.queuedCount(), 1U); // The last turn's reminder, undisturbed.
    EXPECT_EQ(state_.trackedSessionCount(), 1U);
}

TEST_F(CompletionReminderLimits, keepsNoMoreThan16Reminders)
{
    for (int session = 0; session < 17; ++session)
        pair(std::to_string(session), "1");
    EXPECT_EQ(state_.queuedCount(), 16U);

    state_.refresh({1});
    ASSERT_TRUE(state_.current());
    pair("17", "1", {1}); // The current one counts.
    EXPECT_EQ(state_.queuedCount(), 16U);
    state_.dismiss(state_.current()->token);
    pair("18", "1", {1});
    EXPECT_EQ(state_.queuedCount(), 16U);
}

TEST_F(CompletionReminderLimits, timeThatIsNoNumberTakesTheRemindersAway)
{
    pair("a", "1");
    state_.refresh({1});
    pair("b", "1", {1});
    ASSERT_EQ(state_.queuedCount(), 2U);
    state_.refresh({std::numeric_limits<double>::quiet_NaN()});
    EXPECT_EQ(state_.queuedCount(), 0U);
    EXPECT_FALSE(state_.current());
}

TEST_F(CompletionReminderLimits, invalidEventsAreNotObserved)
{
    observe(CompletionEvent::Kind::started, "not safe", "1");
    EXPECT_EQ(state_.trackedSessionCount(), 0U);
}

} // namespace
} // namespace notch
