// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/WaitingRequests.h"

#include <algorithm>
#include <array>
#include <deque>
#include <gtest/gtest.h>
#include <iostream>
#include <set>
#include <string>

namespace notch {
namespace {

constexpr Date expiry{50};
constexpr std::size_t hookCount = 3;
const std::array<UUID, hookCount> tokens{UUID::random(), UUID::random(), UUID::random()};
const UUID sharedID = UUID::random(); // Of the first two hooks.
const std::array<UUID, hookCount> ids{sharedID, sharedID, UUID::random()};
const PollableFlag flag = PollableFlag::make().value();

// The approval server with three hooks, at the level of what it does under its lock: each worker
// takes the steps of ApprovalServer::serve in their order, and between any two of them everything
// else may happen. What this does not show is that a step is one, which is the lock's part, nor
// what the sockets do.
class Schedule {
public:
    // An event of one hook, or of all. False: it cannot happen now.
    using Event = bool (Schedule::*)(std::size_t hook);

    bool take(const char* name, Event event, std::size_t hook)
    {
        log_ += std::to_string(hook) + ' ' + name + ", ";
        const testing::ScopedTrace trace(__FILE__, __LINE__, log_);
        const bool happened = (this->*event)(hook);
        checkRoom();
        return happened;
    }

    // Everything that the next events depend on.
    std::string state() const
    {
        std::string text =
            std::to_string(now_.seconds) + (requests_.isOpen() ? " open" : " closed");
        for (const auto& hook : hooks_) {
            text += ' ' + std::to_string(static_cast<int>(hook.step)) + (hook.gone ? " gone" : "");
            text += hook.accepted ? " accepted" : "";
        }
        return text;
    }

    bool connects(std::size_t number)
    {
        auto& hook = hooks_[number];
        if (hook.step != Step::away)
            return false;
        const bool entered = requests_.enter(tokens[number], flag);
        EXPECT_EQ(entered, requests_.isOpen());
        hook.step = entered ? Step::connected : Step::left;
        return true;
    }

    bool asks(std::size_t number)
    {
        auto& hook = hooks_[number];
        if (hook.step != Step::connected)
            return false;
        const bool taken = std::ranges::any_of(hooks_, [&](const Hook& other) {
            return other.isPending()
                && ids[static_cast<std::size_t>(&other - hooks_.data())] == ids[number];
        });
        const bool admitted = requests_.admit(tokens[number], ids[number], expiry);
        EXPECT_EQ(admitted, requests_.isOpen() && !taken);
        return admitted ? (hook.step = Step::waiting, true) : leaves(number);
    }

    bool hangsUp(std::size_t number)
    {
        auto& hook = hooks_[number];
        const bool there = hook.step != Step::away && hook.step != Step::left && !hook.gone;
        hook.gone = hook.gone || there;
        return there;
    }

    // A person's click may come at any time, also late or twice.
    bool isDecided(std::size_t number)
    {
        auto& hook = hooks_[number];
        const bool counts =
            requests_.isOpen() && now_ < expiry && hook.step == Step::waiting && !hook.accepted;
        const auto decision = number == 0 ? Decision::deny : Decision::allow;
        EXPECT_EQ(requests_.decide(tokens[number], decision, now_), counts);
        if (counts)
            hook.accepted = decision;
        return counts;
    }

    // The worker's next step, when its wait has ended.
    bool goesOn(std::size_t number)
    {
        auto& hook = hooks_[number];
        const bool over = hook.gone || !requests_.isOpen();
        if (hook.step == Step::waiting && (over || hook.accepted || now_ >= expiry)) {
            hook.step = Step::settled;
            EXPECT_EQ(requests_.settle(tokens[number]), hook.accepted) << "what the hook is told";
            return true;
        }
        const bool silent = hook.step == Step::connected && over;
        return (silent || hook.step == Step::settled) && leaves(number);
    }

    bool lapses(std::size_t)
    {
        const bool first = now_ < expiry;
        now_ = expiry;
        return first;
    }

    bool isStopped(std::size_t)
    {
        const bool first = requests_.isOpen();
        requests_.close();
        return first;
    }

private:
    enum class Step { away, connected, waiting, settled, left };
    struct Hook {
        Step step = Step::away;
        bool gone = false;
        std::optional<Decision> accepted; // The decision of the decide() that returned true.

        bool isPending() const { return step == Step::waiting || step == Step::settled; }
    };

    bool leaves(std::size_t number)
    {
        auto& hook = hooks_[number];
        EXPECT_EQ(requests_.leave(tokens[number]), hook.isPending()) << "the model is told";
        hook.step = Step::left;
        return true;
    }

    // A hook that has left takes no room.
    void checkRoom() const
    {
        const bool empty = std::ranges::all_of(hooks_,
            [](const auto& hook) { return hook.step == Step::away || hook.step == Step::left; });
        auto requests = requests_;
        for (std::size_t i = 0; empty && i < WaitingRequests::mostConnections; ++i)
            EXPECT_EQ(requests.enter(UUID::random(), flag), requests.isOpen());
    }

    WaitingRequests requests_ = [] {
        WaitingRequests opened;
        opened.open();
        return opened;
    }();
    std::array<Hook, hookCount> hooks_;
    Date now_;
    std::string log_;
};

constexpr std::array<std::pair<const char*, Schedule::Event>, 7> events{{
    {"connects", &Schedule::connects},
    {"asks", &Schedule::asks},
    {"hangs up", &Schedule::hangsUp},
    {"is decided", &Schedule::isDecided},
    {"goes on", &Schedule::goesOn},
    {"lapses with all others", &Schedule::lapses},
    {"is stopped with all others", &Schedule::isStopped},
}};

TEST(WaitingRequests, relaysEachDecisionToItsOwnHookInEveryOrderOfEvents)
{
    std::deque<Schedule> found{Schedule()};
    std::set<std::string> seen{found.front().state()};
    std::size_t edges = 0;
    for (; !found.empty() && !HasFailure(); found.pop_front()) {
        for (const auto& [name, event] : events) {
            for (std::size_t hook = 0; hook < hookCount; ++hook) {
                auto next = found.front();
                if (!next.take(name, event, hook))
                    continue;
                ++edges;
                if (seen.insert(next.state()).second)
                    found.push_back(std::move(next));
            }
        }
    }
    std::cout << seen.size() << " states, " << edges << " edges\n";
}

} // namespace
} // namespace notch
