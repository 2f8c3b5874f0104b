// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Interaction/QuestionReminderState.h"

#include "Rehearsal/TracePlayer.h"

#include <gtest/gtest.h>
#include <map>
#include <string>

namespace notch {
namespace {

// Plays observations: page NUMBER [card WORD] [process NUMBER], invalid, absent, unreadable; and
// operations: claim [blocked], collapse, begin [blocked], comes, stays (the host, at the hand-off's
// end), and late … for begin and comes with the token of the first flow.
class QuestionPlayer final : public TracePlayer {
public:
    QuestionPlayer()
    {
        operations_ = {
            {"page", [this] { state_.observe(page()); }},
            {"invalid",
                [this] {
                    state_.observe(QuestionReminder{"Q", 7, "\u3000\n", 1, 3});
                }},
            {"absent", [this] { state_.observe(State::Absent{}); }},
            {"unreadable", [this] { state_.observe(State::Unavailable{}); }},
            {"claim", [this] { answer(state_.claimAutoExpansion(!given("blocked")).has_value()); }},
            {"collapse", [this] { state_.collapse(); }},
            {"begin", [this] { begin(token()); }},
            {"comes", [this] { answer(state_.completeHandoff(token(), true)); }},
            {"stays", [this] { answer(state_.completeHandoff(token(), false)); }},
            {"late", [this] { late(); }},
        };
    }

private:
    using State = QuestionReminderState;

    State::PresentationToken token() const
    {
        return state_.token().value_or(State::PresentationToken{});
    }
    void begin(const State::PresentationToken& token)
    {
        const auto handoff = state_.beginHandoff(token, !given("blocked"));
        EXPECT_TRUE(!handoff || (handoff->token == token && handoff->pid() > 0));
        answer(handoff.has_value());
    }
    void late()
    {
        if (next() == "begin")
            begin(first_);
        else
            answer(state_.completeHandoff(first_, true));
    }

    QuestionReminder page()
    {
        QuestionReminder reminder{"Q", 7, "title", next<int>(), 3};
        while (const auto what = more()) {
            if (*what == "card")
                reminder.flowID = next();
            else
                reminder.pid = next<std::int32_t>();
        }
        return reminder;
    }

    // The flow by a letter, what is visible of it, and how far it has come.
    std::string stateText() override
    {
        if (!state_.token())
            return "no flow";
        if (names_.empty())
            first_ = *state_.token();
        const std::string letter(1, static_cast<char>('A' + names_.size()));
        static const std::array stages{"", " asked", " answered", " failed"};
        return names_.try_emplace(state_.token()->value, letter).first->second
             + (state_.visible() ? " page " + std::to_string(state_.visible()->currentPage) : "")
             + (state_.hasBeenPresented() ? " presented" : "")
             + stages.at(static_cast<std::size_t>(state_.handoffStatus()));
    }

    State state_;
    State::PresentationToken first_;
    std::map<UUID, std::string> names_;
};

struct Trace {
    const char* name;
    const char* text;
};

const Trace traces[] = {
    {"nothing is seen",
        R"(absent, unreadable, claim, collapse, begin, comes | no  no  no  no flow
)"},
    {"two identical scans show it",
        R"(page 1         | A
page 1, page 1 | A page 1
)"},
    {"opens by itself once",
        R"(page 1, claim               | no  A
page 1, claim blocked       | no  A page 1
claim, claim                | yes  no  A page 1 presented
)"},
    {"a collapse counts as seen",
        R"(page 1, collapse        | A
page 1, collapse, claim | no  A page 1 presented
)"},
    {"another page is confirmed anew",
        R"(page 1, page 1, claim | yes  A page 1 presented
page 2                | A presented
page 2, claim         | no  A page 2 presented
page 1, page 2        | A presented
)"},
    {"a scan that could not be read or is invalid is confirmed anew",
        R"(page 1, page 1, unreadable, page 1 | A
page 1, invalid, page 1            | A
page 1                             | A page 1
)"},
    {"two absences in a row end it",
        R"(page 1, page 1, claim, absent, page 1           | yes  A presented
page 1, claim, absent, unreadable, absent, page 1 | no  A presented
page 1                                          | A page 1 presented
absent, absent                                  | no flow
page 1, page 1, claim                           | yes  B page 1 presented
)"},
    {"another card or process is another flow",
        R"(page 1, page 1, claim                    | yes  A page 1 presented
page 1 card R, page 1 card R             | B page 1
page 1 card R process 9                  | C
page 1 card R process 9                  | C page 1
)"},
    {"hand-off succeeds once",
        R"(page 1, begin                  | no  A
page 1, begin blocked          | no  A page 1
begin, begin                   | yes  no  A page 1 presented asked
comes, comes                   | yes  no  A presented answered
page 1, page 2, page 2, claim  | no  A presented answered
)"},
    {"hand-off fails and is not retried",
        R"(page 1, page 1, begin, stays | yes  yes  A page 1 presented failed
page 1, begin, stays         | no  no  A page 1 presented failed
)"},
    {"hand-off outlasts an unreadable scan",
        R"(page 1, page 1, begin, unreadable | yes  A presented asked
comes, page 1, page 1             | yes  A presented answered
)"},
    {"a stale token does nothing",
        R"(page 1, page 1, begin                     | yes  A page 1 presented asked
page 1 card R, page 1 card R              | B page 1
late comes, late begin, begin, late comes | no  no  yes  no  B page 1 presented asked
)"},
};

TEST(QuestionReminderState, goesAsWritten)
{
    for (const auto& [name, text] : traces)
        EXPECT_EQ(QuestionPlayer().played(text), text) << name;
}

TEST(QuestionReminder, isValidOnlyAsAWhole)
{
    EXPECT_TRUE((QuestionReminder{"f", 1, "t", 2, 2}.isValid()));
    for (const auto& bad : {QuestionReminder{" \u00A0\n", 1, "t", 2, 2}, {"f", 0, "t", 2, 2},
             {"f", 1, " \u00A0\n", 2, 2}, {"f", 1, "t", 2, 1}, {"f", 1, "t", 0, 2}})
        EXPECT_FALSE(bad.isValid()) << bad.flowID << bad.pid << bad.title << bad.currentPage;
}

} // namespace
} // namespace notch
