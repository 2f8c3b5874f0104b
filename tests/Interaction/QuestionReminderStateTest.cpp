// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Interaction/QuestionReminderState.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <sstream>
#include <string>

namespace notch {
namespace {

using State = QuestionReminderState;

// Runs a script of words and prints the state after each. In:
//   a1 a2 b1    waiting: flow a, page 1; b@9: the same flow in process 9; bad: an invalid reminder
//   - ?         absent; unavailable
//   claim collapse begin yes no (the hand-off's outcome); claim! begin! when nothing may be shown
//   old.begin old.yes   with the token of the first flow
// Out: the token (A, B … in order of appearance), the visible page, p if presented, the hand-off's
// status (i f a x); then + or 0 for what an operation gave.
class Trace {
public:
    std::string run(const std::string& script)
    {
        std::istringstream words(script);
        std::string trace;
        for (std::string word; words >> word;)
            trace += (trace.empty() ? "" : " ") + step(word);
        return trace;
    }

private:
    std::string step(const std::string& word)
    {
        const auto given = apply(word);
        const std::string status(1, "ifax"[static_cast<int>(state_.handoffStatus())]);
        return name(state_.token())
             + (state_.visible() ? std::to_string(state_.visible()->currentPage) : "")
             + (state_.hasBeenPresented() ? "p" : "") + status + given;
    }

    std::string apply(const std::string& word)
    {
        const auto sign = [](bool given) { return given ? "+" : "0"; };
        const auto token =
            word.starts_with("old.") ? first_ : state_.token().value_or(State::PresentationToken{});
        const auto end = word.substr(word.starts_with("old.") ? 4 : 0);
        if (end == "claim" || end == "claim!")
            return sign(state_.claimAutoExpansion(end == "claim").has_value());
        if (end == "begin" || end == "begin!") {
            const auto handoff = state_.beginHandoff(token, end == "begin");
            EXPECT_TRUE(!handoff || (handoff->token == token && handoff->pid() > 0));
            return sign(handoff.has_value());
        }
        if (end == "yes" || end == "no")
            return sign(state_.completeHandoff(token, end == "yes"));
        if (end == "collapse")
            state_.collapse();
        else
            state_.observe(observation(end));
        return "";
    }

    static State::Observation observation(const std::string& word)
    {
        if (word == "-")
            return State::Absent{};
        if (word == "?")
            return State::Unavailable{};
        QuestionReminder reminder{word.substr(0, 1), 7, "t", 1, 3};
        if (word == "bad")
            reminder.title = "\u3000\n";
        else if (word.find('@') != word.npos)
            reminder.pid = word.back() - '0';
        else
            reminder.currentPage = word[1] - '0';
        return reminder;
    }

    std::string name(const std::optional<State::PresentationToken>& token)
    {
        if (!token)
            return "";
        if (names_.empty())
            first_ = *token;
        const auto next = std::string(1, static_cast<char>('A' + names_.size()));
        return names_.try_emplace(token->value, next).first->second;
    }

    State state_;
    State::PresentationToken first_;
    std::map<UUID, std::string> names_;
};

TEST(QuestionReminderState, followsAFlowThroughItsObservations)
{
    using Row = std::array<const char*, 3>;
    for (const auto& [name, script, trace] : {
             Row{"nothing seen", "- ? claim collapse begin yes", "i i i0 i i0 i0"},
             Row{"two identical scans show it", "a1 a1 a1 a1", "Ai A1i A1i A1i"},
             Row{"opens by itself once", "a1 claim a1 claim! claim claim",
                 "Ai Ai0 A1i A1i0 A1pi+ A1pi0"},
             Row{"a collapse counts as seen", "a1 collapse a1 collapse claim",
                 "Ai Ai A1i A1pi A1pi0"},
             Row{"another page is confirmed anew", "a1 a1 claim a2 a2 claim a1 a2",
                 "Ai A1i A1pi+ Api A2pi A2pi0 Api Api"},
             Row{"an unreadable scan is confirmed anew", "a1 a1 ? a1 a1", "Ai A1i Ai Ai A1i"},
             Row{"an invalid reminder is unreadable", "a1 a1 bad a1 a1", "Ai A1i Ai Ai A1i"},
             Row{"one absence keeps the flow", "a1 a1 claim - a1 a1 claim",
                 "Ai A1i A1pi+ Api Api A1pi A1pi0"},
             Row{"two absences end it", "a1 a1 claim - - a1 a1 claim",
                 "Ai A1i A1pi+ Api i Bi B1i B1pi+"},
             Row{"absences apart end nothing", "a1 - a1 - ? - a1", "Ai Ai Ai Ai Ai Ai Ai"},
             Row{"another flow", "a1 a1 claim b1 b1 claim", "Ai A1i A1pi+ Bi B1i B1pi+"},
             Row{"another process", "a1 a1 a@9 a@9", "Ai A1i Bi B1i"},
             Row{"hand-off succeeds", "a1 begin a1 begin! begin begin yes yes a1 a1 a2 a2 claim",
                 "Ai Ai0 A1i A1i0 A1pf+ A1pf0 Apa+ Apa0 Apa Apa Apa Apa Apa0"},
             Row{"hand-off fails and is not retried", "a1 a1 begin no a1 begin no",
                 "Ai A1i A1pf+ A1px+ A1px A1px0 A1px0"},
             Row{"hand-off outlasts an unreadable scan", "a1 a1 begin ? yes a1 a1",
                 "Ai A1i A1pf+ Apf Apa+ Apa Apa"},
             Row{"stale token", "a1 a1 begin b1 b1 old.yes old.begin begin old.yes",
                 "Ai A1i A1pf+ Bi B1i B1i0 B1i0 B1pf+ B1pf0"},
         })
        EXPECT_EQ(Trace().run(script), trace) << name;
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
