// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "CompletionPlayer.h"

#include <algorithm>
#include <map>
#include <rapidcheck/gtest.h>
#include <set>
#include <tuple>
#include <utility>
#include <vector>

namespace notch {
namespace {

using Arrival = CompletionPlayer::Arrival;
using Kind = CompletionEvent::Kind;
using State = CompletionReminderState;

// Few of everything, so that pairs, duplicates and replays occur often.
rc::Gen<std::string> anyEvent()
{
    const auto part = [](std::initializer_list<std::pair<std::size_t, std::string>> weighted) {
        return rc::gen::weightedElement<std::string>(weighted);
    };
    const auto parts = rc::gen::tuple(part({{1, "+"}, {2, "-"}}),
        part({{1, "a"}, {1, "b"}, {1, "c"}}), part({{8, "/1"}, {4, "/2"}, {1, ""}}),
        part({{8, ""}, {1, ",agent=x"}}), part({{8, ""}, {1, ",failed"}, {1, ",none"}}),
        part({{20, ""}, {2, ",age=0.5"}, {1, ",age=3"}, {1, ",age=3.5"}, {1, ",age=-0.5"}}),
        part({{16, ""}, {1, ",pid=8"}, {1, ",pid=0"}}), part({{3, ""}, {1, ",front"}}));
    return rc::gen::map(parts, [](const auto& all) {
        return std::apply([](const auto&... each) { return (each + ...); }, all);
    });
}

rc::Gen<std::string> anyWord()
{
    return rc::gen::weightedOneOf<std::string>({{20, anyEvent()},
        {16, rc::gen::weightedElement<std::string>(
                 {{6, "~0.1"}, {6, "~0.5"}, {4, "~1"}, {1, "~5"}, {1, "~29.5"}, {1, "~-0.5"}})},
        {12, rc::gen::weightedElement<std::string>({{6, "tick"}, {2, "claim"}, {1, "collapse"},
                 {1, "dismiss"}, {1, "clear"}, {1, "off"}})}});
}

bool isOfSameTurn(const Arrival& a, const Arrival& b)
{
    return a.event.sessionID == b.event.sessionID && a.event.generationID == b.event.generationID
        && a.event.agentID == b.event.agentID && a.pid == b.pid;
}

// Walks one state, keeping every event that arrived in time since everything was last forgotten.
class Walk {
public:
    void take(const std::string& word)
    {
        const bool granted = player_.play(word)[0] == '>';
        const auto& state = player_.state();
        const bool isEvent = word[0] == '+' || word[0] == '-';
        if (isEvent)
            keep(player_.lastArrival());
        if (word == "off")
            arrivals_.clear(), tokens_.clear();
        RC_ASSERT(state.queuedCount() <= State::mostReminders);
        RC_ASSERT(state.trackedSessionCount() <= State::mostSessions);
        RC_ASSERT(state.current() || !state.hasBeenPresented());
        if (granted)
            RC_ASSERT(claimed_.insert(state.current()->token).second);
        if (state.current())
            checkCurrent(*state.current(), isEvent || word == "tick" || word == "claim");
    }

private:
    void keep(const Arrival& arrival)
    {
        const auto age = player_.now() - arrival.event.observedAt;
        if (arrival.pid && age >= Seconds::zero() && age <= Seconds{3})
            arrivals_.push_back(arrival);
    }

    void checkCurrent(const CompletionReminder& reminder, bool refreshed)
    {
        const auto age = player_.now() - reminder.receivedAt;
        RC_ASSERT(!refreshed || (age >= Seconds::zero() && age < State::lifetime));
        // Not of a reminder that is up already: the clock may have been set back since.
        RC_ASSERT(reminder.token == lastToken_ || age >= State::settlingTime);
        lastToken_ = reminder.token;
        const auto end = std::ranges::find(arrivals_, reminder.event, &Arrival::event);
        RC_ASSERT(end != arrivals_.end());
        RC_ASSERT(end->background && end->pid == reminder.pid);
        RC_ASSERT(end->event.kind == Kind::ended
                  && end->event.reason == CompletionEvent::Reason::completed);
        RC_ASSERT(isPaired(end));

        const auto known = tokens_.emplace(
            std::pair(reminder.event.sessionID, *reminder.event.generationID), reminder.token);
        RC_ASSERT(known.first->second == reminder.token);
    }

    using At = std::vector<Arrival>::const_iterator;

    // A start of the same turn came before this end, and no other end has consumed it since.
    bool isPaired(At end) const
    {
        for (auto start = arrivals_.begin(); start != end; ++start) {
            const auto consumes = [&](const Arrival& each) {
                return each.event.kind == Kind::ended && isOfSameTurn(each, *start)
                    && each.event.observedAt >= start->event.observedAt;
            };
            if (start->event.kind == Kind::started && consumes(*end) && !isReplay(start)
                && std::none_of(start, end, consumes))
                return true;
        }
        return false;
    }

    // The session's first start of all is always accepted, so that this turn cannot start again.
    bool isReplay(At start) const
    {
        const auto first = std::ranges::find_if(arrivals_, [&](const Arrival& each) {
            return each.event.sessionID == start->event.sessionID && each.event.generationID
                && each.event.kind == Kind::started;
        });
        return first < start && first->event.generationID == start->event.generationID;
    }

    CompletionPlayer player_;
    UUID lastToken_;
    std::vector<Arrival> arrivals_;
    std::map<std::pair<std::string, std::string>, UUID> tokens_;
    std::set<UUID> claimed_;
};

RC_GTEST_PROP(CompletionReminderWalk, remindsOnlyOfExactPairsAndOnlyOnce, ())
{
    Walk walk;
    constexpr double wordsPerSize = 10; // Walks of up to 1,000 words.
    const auto words = rc::gen::container<std::vector<std::string>>(anyWord());
    for (const auto& word : *rc::gen::scale(wordsPerSize, words))
        walk.take(word);
}

} // namespace
} // namespace notch
