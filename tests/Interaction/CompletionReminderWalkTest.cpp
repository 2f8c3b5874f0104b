// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Interaction/CompletionReminderState.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <ostream>
#include <rapidcheck/gtest.h>
#include <set>
#include <utility>
#include <vector>

namespace notch {
namespace {

using Kind = CompletionEvent::Kind;
using Reason = CompletionEvent::Reason;
using State = CompletionReminderState;

struct Step {
    enum class Operation : std::uint8_t { observe, tick, claim, collapse, dismiss, clear, disable };
    Operation operation{};
    double passed = 0; // Before this step; negative for a clock set back.
    Kind kind{};
    std::string session;
    std::optional<std::string> generation;
    std::optional<std::string> agent;
    std::optional<Reason> reason;
    double age = 0;
    std::optional<std::int32_t> pid;
    bool background = false;
};

std::ostream& operator<<(std::ostream& out, const Step& step)
{
    return out << "+" << step.passed << " operation " << int(step.operation) << " "
               << name(step.kind) << " " << step.session << "/" << step.generation.value_or("-")
               << " agent " << step.agent.value_or("-") << " reason "
               << (step.reason ? name(*step.reason) : "-") << " age " << step.age << " pid "
               << step.pid.value_or(0) << (step.background ? "" : " foreground") << "\n";
}

// Few of everything, so that pairs, duplicates and replays occur often.
rc::Gen<Step> anyStep()
{
    using Operation = Step::Operation;
    using rc::gen::set;
    const auto text = [](const char* value) {
        return rc::gen::just(std::optional<std::string>(value));
    };
    const auto none = rc::gen::just(std::optional<std::string>());
    return rc::gen::build<Step>(
        set(&Step::operation,
            rc::gen::weightedElement<Operation>({{20, Operation::observe}, {6, Operation::tick},
                {2, Operation::claim}, {1, Operation::collapse}, {1, Operation::dismiss},
                {1, Operation::clear}, {1, Operation::disable}})),
        set(&Step::passed, rc::gen::weightedElement<double>({{20, 0}, {6, 0.1}, {6, 0.5}, {4, 1},
                               {1, 5}, {1, 29.5}, {1, -0.5}})),
        set(&Step::kind, rc::gen::element(Kind::started, Kind::ended, Kind::ended)),
        set(&Step::session, rc::gen::element<std::string>("a", "b", "c")),
        set(&Step::generation, rc::gen::weightedOneOf<std::optional<std::string>>(
                                   {{8, text("1")}, {4, text("2")}, {1, none}})),
        set(&Step::agent,
            rc::gen::weightedOneOf<std::optional<std::string>>({{8, none}, {1, text("x")}})),
        set(&Step::reason, rc::gen::weightedElement<std::optional<Reason>>(
                               {{8, Reason::completed}, {1, Reason::failed}, {1, std::nullopt}})),
        set(&Step::age,
            rc::gen::weightedElement<double>({{20, 0}, {2, 0.5}, {1, 3}, {1, 3.5}, {1, -0.5}})),
        set(&Step::pid, rc::gen::weightedElement<std::optional<std::int32_t>>(
                            {{16, 7}, {1, 8}, {1, std::nullopt}})),
        set(&Step::background, rc::gen::weightedElement<bool>({{3, true}, {1, false}})));
}

struct Arrival {
    CompletionEvent event;
    std::int32_t pid = 0;
    bool background = false;
};

bool isOfSameTurn(const Arrival& a, const Arrival& b)
{
    return a.event.sessionID == b.event.sessionID && a.event.generationID == b.event.generationID
        && a.event.agentID == b.event.agentID && a.pid == b.pid;
}

// Walks one state, keeping every event that arrived in time since everything was last forgotten.
class Walk {
public:
    void take(const Step& step)
    {
        now_ = now_ + Seconds{step.passed};
        perform(step);
        RC_ASSERT(state_.queuedCount() <= State::mostReminders);
        RC_ASSERT(state_.trackedSessionCount() <= State::mostSessions);
        if (state_.current())
            checkCurrent(*state_.current());
        else
            RC_ASSERT(!state_.hasBeenPresented());
    }

private:
    void perform(const Step& step)
    {
        switch (step.operation) {
        case Step::Operation::observe:
            observe(step);
            break;
        case Step::Operation::tick:
            state_.refresh(now_);
            break;
        case Step::Operation::claim:
            if (const auto token = state_.claimAutoExpansion(true, now_))
                RC_ASSERT(claimed_.insert(*token).second);
            break;
        case Step::Operation::collapse:
            state_.collapse();
            break;
        case Step::Operation::dismiss:
            if (state_.current())
                state_.dismiss(state_.current()->token);
            break;
        case Step::Operation::clear:
            state_.clearPresentation();
            break;
        case Step::Operation::disable:
            state_.observe({}, step.pid, step.background, false, now_);
            arrivals_.clear();
            tokens_.clear();
            break;
        }
        refreshed_ = step.operation <= Step::Operation::claim;
    }

    void observe(const Step& step)
    {
        const CompletionEvent event{.id = UUID::random().text(),
            .sessionID = step.session,
            .generationID = step.generation,
            .agentID = step.agent,
            .kind = step.kind,
            .reason = step.kind == Kind::ended ? step.reason : std::nullopt,
            .observedAt = now_ + Seconds{-step.age}};
        state_.observe(event, step.pid, step.background, true, now_);
        const auto age = now_ - event.observedAt;
        if (step.pid && age >= Seconds::zero() && age <= Seconds{3})
            arrivals_.push_back({event, *step.pid, step.background});
    }

    void checkCurrent(const CompletionReminder& reminder)
    {
        const auto age = now_ - reminder.receivedAt;
        RC_ASSERT(!refreshed_ || (age >= Seconds::zero() && age < State::lifetime));
        // Not of a reminder that is up already: the clock may have been set back since.
        RC_ASSERT(reminder.token == lastToken_ || age >= State::settlingTime);
        lastToken_ = reminder.token;
        const auto end = std::ranges::find_if(
            arrivals_, [&](const auto& each) { return each.event == reminder.event; });
        RC_ASSERT(end != arrivals_.end());
        RC_ASSERT(end->event.kind == Kind::ended && end->event.reason == Reason::completed);
        RC_ASSERT(end->background && end->pid == reminder.pid);
        RC_ASSERT(beginsAPair(end - arrivals_.begin()));

        const auto known = tokens_.emplace(
            std::pair(reminder.event.sessionID, *reminder.event.generationID), reminder.token);
        RC_ASSERT(known.first->second == reminder.token);
    }

    // A start of the same turn came before this end, and no other end has consumed it since.
    bool beginsAPair(std::ptrdiff_t end) const
    {
        const auto& ended = arrivals_[std::size_t(end)];
        for (auto i = end - 1; i >= 0; --i) {
            const auto& earlier = arrivals_[std::size_t(i)];
            if (!isOfSameTurn(earlier, ended))
                continue;
            if (earlier.event.kind == Kind::started
                && earlier.event.observedAt <= ended.event.observedAt && !isReplay(i)
                && !isConsumedBetween(i, end))
                return true;
        }
        return false;
    }

    // The session's first start of all is always accepted, so that this turn cannot start again.
    bool isReplay(std::ptrdiff_t start) const
    {
        const auto& started = arrivals_[std::size_t(start)].event;
        const auto first = std::ranges::find_if(arrivals_, [&](const auto& each) {
            return each.event.sessionID == started.sessionID && each.event.generationID
                && each.event.kind == Kind::started;
        });
        return first - arrivals_.begin() < start
            && first->event.generationID == started.generationID;
    }

    bool isConsumedBetween(std::ptrdiff_t start, std::ptrdiff_t end) const
    {
        const auto& started = arrivals_[std::size_t(start)];
        return std::any_of(
            arrivals_.begin() + start, arrivals_.begin() + end, [&](const auto& each) {
                return each.event.kind == Kind::ended && isOfSameTurn(each, started)
                    && each.event.observedAt >= started.event.observedAt;
            });
    }

    State state_;
    Date now_{1000};
    bool refreshed_ = false;
    UUID lastToken_;
    std::vector<Arrival> arrivals_;
    std::map<std::pair<std::string, std::string>, UUID> tokens_;
    std::set<UUID> claimed_;
};

RC_GTEST_PROP(CompletionReminderWalk, remindsOnlyOfExactPairsAndOnlyOnce, ())
{
    Walk walk;
    constexpr double stepsPerSize = 5; // Walks of up to 500 steps.
    const auto steps = rc::gen::container<std::vector<Step>>(anyStep());
    for (const auto& step : *rc::gen::scale(stepsPerSize, steps))
        walk.take(step);
}

} // namespace
} // namespace notch
