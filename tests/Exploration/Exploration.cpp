// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// Drives the shipped model, breadth-first, through every state that it can come to, and reports the
// shortest way to a broken promise, as a trace in the words of StartedModel:
//
//   Exploration all|SCENARIO [MOST_STATES]
//
// A state is brought back by its way from the start. That a state's text tells all that matters is
// looked at, too: of every thousandth step that leads to a known text, both ways must lead on
// alike.

#include "ExploredModel.h"
#include "Scenarios.h"
#include "WorldMemory.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstring>
#include <iostream>
#include <limits>
#include <map>
#include <thread>
#include <unordered_map>

namespace notch {
namespace {

using EventNumber = std::uint8_t;
using StateNumber = std::uint32_t;

// Two hashes of a state's text; that two states share both is out of the question.
struct Key {
    std::uint64_t first = 0;
    std::uint64_t second = 0xcbf29ce484222325;

    explicit Key(std::string_view text)
        : first(std::hash<std::string_view>()(text))
    {
        for (const char each : text)
            second = (second ^ static_cast<unsigned char>(each)) * 0x100000001b3;
    }
    void add(const Key& more)
    {
        first = first * 0x9e3779b97f4a7c15 + more.first;
        second = second * 0x100000001b3 + more.second;
    }
    auto operator<=>(const Key&) const = default;
};
struct HashOfKey {
    std::size_t operator()(const Key& key) const { return key.first; }
};

struct Step {
    StateNumber from = 0;
    EventNumber event = 0;

    auto operator<=>(const Step&) const = default;
};
using Path = std::vector<EventNumber>;

struct Found {
    Key key;
    Step by;
};
struct Counterexample {
    Step by;
    std::string broken;
};

// A model that is brought to any state and back.
class World {
public:
    explicit World(const Scenario& scenario)
        : scenario_(scenario)
    {
        const WorldMemory::Inside inside(memory_);
        model_ = new ExploredModel(scenario.grain);
        begin_.emplace();
    }
    ~World() { } // The memory goes as a whole.

    void go(const Path& path)
    {
        if (begin_->empty())
            *begin_ = memory_.saved();
        memory_.restore(*begin_);
        for (const auto event : path)
            take(event);
        here_ = memory_.saved();
    }
    void comeBack() { memory_.restore(here_); }

    bool isPossible(EventNumber event) const { return model_->isPossible(scenario_.events[event]); }
    void take(EventNumber event)
    {
        const WorldMemory::Inside inside(memory_);
        model_->take(scenario_.events[event]);
    }
    // How far a reminder's arming has come is told by what opening the notch would begin.
    Key key()
    {
        auto key = told();
        if (!model_->hasReminder())
            return key;
        const auto here = memory_.saved();
        openForHostBehind();
        key.add(told());
        memory_.restore(here);
        return key;
    }
    const std::string& broken() const { return model_->broken(); }
    void lookForDeadEnds()
    {
        const WorldMemory::Inside inside(memory_);
        model_->lookForDeadEnds();
    }

private:
    void openForHostBehind()
    {
        const WorldMemory::Inside inside(memory_);
        model_->openForHostBehind();
    }
    Key told()
    {
        const WorldMemory::Inside inside(memory_);
        return Key(model_->key());
    }

    const Scenario& scenario_;
    WorldMemory memory_;
    ExploredModel* model_ = nullptr;
    std::optional<std::vector<std::byte>> begin_;
    std::vector<std::byte> here_;
};

class Exploration {
public:
    Exploration(const Scenario& scenario, std::size_t mostStates)
        : scenario_(scenario)
        , mostStates_(mostStates)
    {
        World world(scenario);
        world.go({});
        add({world.key(), {}});
    }

    void run()
    {
        std::size_t begin = 0;
        for (; begin < ways_.size() && !counterexample_ && ways_.size() < mostStates_; ++depth_) {
            const auto end = ways_.size();
            exploreLevel(begin, end);
            begin = end;
        }
        complete_ = begin == ways_.size() && !counterexample_;
        if (complete_)
            checkMerges();
    }
    std::string report() const
    {
        return std::to_string(ways_.size()) + (complete_ ? " states in all, " : " states so far, ")
             + std::to_string(edges_) + " edges, deepest shortest path "
             + std::to_string(depth_ - 1) + ", " + std::to_string(merges_.size())
             + " merges looked at";
    }
    bool isTrustworthy() const { return !counterexample_ && (!differ_ || scenario_.isApproximate); }
    const std::optional<Counterexample>& counterexample() const { return counterexample_; }

    Path pathTo(StateNumber state) const
    {
        Path path;
        for (; state != 0; state = ways_[state].from)
            path.push_back(ways_[state].event);
        std::ranges::reverse(path);
        return path;
    }
    Path pathOf(Step step) const
    {
        auto path = pathTo(step.from);
        path.push_back(step.event);
        return path;
    }

private:
    void add(const Found& found)
    {
        if (known_.try_emplace(found.key, static_cast<StateNumber>(ways_.size())).second)
            ways_.push_back(found.by);
    }

    struct Part {
        std::vector<Found> found;
        std::vector<Counterexample> broken;
        std::vector<Found> merges;
        std::unordered_map<Key, bool, HashOfKey> seen;
        std::size_t edges = 0;
    };

    void exploreLevel(std::size_t begin, std::size_t end)
    {
        std::vector<Part> parts(std::max(1U, std::thread::hardware_concurrency()));
        std::atomic<std::size_t> next{begin};
        std::vector<std::thread> threads;
        for (auto& part : parts)
            threads.emplace_back([&, this] {
                World world(scenario_);
                for (auto state = next++; state < end; state = next++)
                    exploreState(world, static_cast<StateNumber>(state), part);
            });
        for (auto& thread : threads)
            thread.join();
        Part all;
        for (auto& part : parts) {
            edges_ += part.edges;
            append(all.found, part.found);
            append(all.broken, part.broken);
            append(merges_, part.merges);
        }
        // Whichever thread found what: two runs tell the same.
        std::ranges::sort(all.found, {}, &Found::by);
        for (const auto& found : all.found)
            add(found);
        if (!all.broken.empty())
            counterexample_ = std::ranges::min(all.broken, {}, &Counterexample::by);
    }
    template <class Value>
    static void append(std::vector<Value>& all, const std::vector<Value>& more)
    {
        all.insert(all.end(), more.begin(), more.end());
    }

    void exploreState(World& world, StateNumber state, Part& part)
    {
        world.go(pathTo(state));
        if (known_.at(world.key()) != state)
            part.broken.push_back({ways_[state], "the same way leads to the same state"});
        forEachEvent(world, [&](EventNumber event) {
            ++part.edges;
            const Step step{state, event};
            if (!world.broken().empty())
                part.broken.push_back({step, world.broken()});
            const Found found{world.key(), step};
            if (!known_.contains(found.key) && part.seen.try_emplace(found.key).second)
                part.found.push_back(found);
            if ((state * 31 + event) % 1024 == 0)
                part.merges.push_back(found);
        });
        world.comeBack();
        world.lookForDeadEnds();
        if (!world.broken().empty())
            part.broken.push_back({ways_[state], world.broken()});
    }

    // `look` finds the world after each possible event, every time from the same state.
    template <class Look> void forEachEvent(World& world, const Look& look) const
    {
        for (std::size_t number = 0; number < scenario_.events.size(); ++number) {
            world.comeBack();
            const auto event = static_cast<EventNumber>(number);
            if (!world.isPossible(event))
                continue;
            world.take(event);
            look(event);
        }
    }

    // Every state that one event leads to, and the first such event.
    std::map<Key, EventNumber> successors(World& world, const Path& path)
    {
        world.go(path);
        std::map<Key, EventNumber> all;
        forEachEvent(world, [&](EventNumber event) { all.try_emplace(world.key(), event); });
        return all;
    }

    // Ways that lead to one text must lead on to the same ones, or the text tells too little.
    void checkMerges()
    {
        World world(scenario_);
        std::erase_if(merges_,
            [this](const Found& merge) { return ways_[known_.at(merge.key)] == merge.by; });
        std::ranges::sort(merges_, {}, &Found::by);
        for (const auto& merge : merges_) {
            const auto one = successors(world, pathOf(merge.by));
            const auto other = successors(world, pathTo(known_.at(merge.key)));
            for (const auto& [key, event] : one) {
                if (other.contains(key))
                    continue;
                differ_ = true;
                std::cout << "Told alike, but different after " << scenario_.events[event] << ":\n"
                          << words(pathOf(merge.by)) << '\n'
                          << words(pathTo(known_.at(merge.key))) << '\n';
                return;
            }
        }
    }
    std::string words(const Path& path) const
    {
        std::string text;
        for (const auto event : path)
            text += scenario_.events[event] + ", ";
        return text;
    }

    const Scenario& scenario_;
    const std::size_t mostStates_;
    std::unordered_map<Key, StateNumber, HashOfKey> known_;
    std::vector<Step> ways_; // To each state, from an earlier one.
    std::vector<Found> merges_; // A sample of the steps that led to what was known.
    bool differ_ = false; // Two of them.
    bool complete_ = false;
    std::size_t edges_ = 0;
    std::size_t depth_ = 0;
    std::optional<Counterexample> counterexample_;
};

// In the words of the tests' traces, each operation with the state after it.
void print(const Scenario& scenario, const Path& path)
{
    ExploredModel model(scenario.grain);
    for (const auto event : path) {
        const auto& words = scenario.events[event];
        model.take(words);
        const bool waits = words == "soon" || words == "until" || words == "age";
        std::cout << (waits ? "wait " + std::to_string(model.waited().count()) : words) << " | "
                  << model.after("") << '\n';
    }
}

} // namespace

// True: no promise is broken, as far as was looked.
bool explore(const Scenario& scenario, std::size_t mostStates)
{
    // Whatever is made once and for all is made now, outside of all worlds.
    for (const auto& words : scenario.events) {
        ExploredModel model(scenario.grain);
        if (model.isPossible(words))
            model.take(words);
        static_cast<void>(model.key());
    }
    const auto begun = std::chrono::steady_clock::now();
    Exploration exploration(scenario, mostStates);
    exploration.run();
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begun;
    std::cout << scenario.name << ": " << exploration.report() << ", " << took.count() << " s"
              << std::endl;
    if (const auto& broken = exploration.counterexample()) {
        std::cout << "Broken: " << broken->broken << '\n';
        print(scenario, exploration.pathOf(broken->by));
    }
    return exploration.isTrustworthy();
}

} // namespace notch

// UUIDs need only differ here, and the kernel's would take most of the time.
extern "C" void arc4random_buf(void* bytes, std::size_t size)
{
    thread_local std::uint64_t last = 0;
    ++last;
    std::memset(bytes, 0, size);
    std::memcpy(bytes, &last, std::min(size, sizeof last));
}

int main(int argc, char** argv)
{
    const std::string which = argc > 1 ? argv[1] : "";
    const std::size_t most = argc > 2 ? std::stoul(argv[2]) : std::numeric_limits<int>::max();
    bool kept = true;
    for (const auto& scenario : notch::scenarios())
        if (which == scenario.name || (which == "all" && !scenario.isLarge))
            kept = notch::explore(scenario, most) && kept;
    return kept ? 0 : 1;
}
