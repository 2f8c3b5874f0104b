// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppModel/StartedModel.h"

#include <random>
#include <set>
#include <utility>

namespace notch {
namespace {

// Drives a model at random and watches, from outside, that no decision leaves but by a click on
// what the person has had before their eyes for the whole guard delay.
class Walk : StartedModel {
public:
    explicit Walk(unsigned seed)
        : random_(seed)
    {
        model.subscribe([this] { look(); });
    }

    void step()
    {
        static const std::vector<std::pair<const char*, void (Walk::*)()>> operations{
            {"hook asks", &Walk::hookAsks},
            {"card appears", &Walk::cardAppears},
            {"hook asks twice", &Walk::hookAsksTwice},
            {"hook goes", &Walk::hookGoes},
            {"hook goes", &Walk::hookGoes},
            {"wait", &Walk::wait},
            {"wait", &Walk::wait},
            {"wait", &Walk::wait},
            {"click", &Walk::click},
            {"click", &Walk::click},
            {"stale click", &Walk::staleClick},
            {"press", &Walk::press},
            {"release", &Walk::release},
            {"open or close", &Walk::openOrClose},
            {"pointer", &Walk::movePointer},
            {"switch", &Walk::switchRequest},
            {"demonstrate", &Walk::demonstrate},
            {"end the demonstration", &Walk::endDemonstration},
            {"leave the receipt", &Walk::leaveReceipt},
            {"click outside", &Walk::clickOutside},
        };
        const auto& [name, operation] = operations[below(operations.size())];
        SCOPED_TRACE(name);
        outside.server.hookWaits = below(4) != 0;
        clicked_ = false;
        const auto before = seen_;
        (this->*operation)();
        judgeDecisions(before, std::string_view(name));
        look();
    }

    std::size_t decisions() const { return decided_.size(); }

private:
    // The request that could be clicked, as a person sees it: open, without a receipt over it.
    struct Seen {
        std::string id;
        double since = 0;
    };

    std::size_t below(std::size_t end) { return random_() % end; }
    Decision anyDecision() { return allDecisions[below(allDecisions.size())]; }

    Seen seen() const
    {
        const bool visible = interaction().expanded() && !interaction().feedback();
        const auto id = visible ? interaction().currentID().value_or("") : "";
        return id == seen_.id ? seen_ : Seen{id, outside.time.uptime().seconds};
    }
    double seenFor(const Seen& seen) const { return outside.time.uptime().seconds - seen.since; }

    // After every operation, those of timers included.
    void look()
    {
        seen_ = seen();
        std::set<std::string> ids;
        for (const auto& request : interaction().requests())
            EXPECT_TRUE(ids.insert(request.id).second) << request.id << " is queued twice";
        if (state().actionReady) {
            EXPECT_FALSE(seen_.id.empty());
            EXPECT_GE(seenFor(seen_), 0.45 - rounding);
        }
    }

    void judgeDecisions(const Seen& before, std::string_view operation)
    {
        for (const auto& call : outside.takeCalls()) {
            const auto at = call.find(".decide ");
            if (at == std::string::npos)
                continue;
            const auto id = call.substr(at + 8, call.rfind(' ') - at - 8);
            EXPECT_TRUE(clicked_) << operation;
            EXPECT_EQ(id, before.id) << "it was not on screen";
            EXPECT_GE(seenFor(before), 0.45 - rounding);
            EXPECT_FALSE(demonstrations_.contains(id));
            EXPECT_TRUE(decided_.insert(id).second) << id << " was decided twice";
        }
    }

    void hookAsks() { ask(outside.hookRequest(std::to_string(nextID_++))); }
    void cardAppears() { ask(outside.nativeRequest(std::to_string(nextID_++))); }
    void ask(ApprovalRequest request)
    {
        request.expiresAt = outside.time.now() + Seconds{0.1 * static_cast<double>(below(100))};
        known_.push_back(request);
        outside.server.callbacks.onRequest(request);
        outside.time.runPosted();
    }
    void hookAsksTwice()
    {
        if (!interaction().requests().empty() && !state().isDemo)
            outside.server.callbacks.onRequest(interaction().requests().back());
        outside.time.runPosted();
    }
    void hookGoes()
    {
        const auto& candidates = below(4) == 0 ? known_ : interaction().requests();
        if (!candidates.empty())
            outside.remove(std::string(candidates[below(candidates.size())].id));
    }
    void wait()
    {
        pass(0.05 * static_cast<double>(1 + below(12)));
        const auto* current = interaction().current();
        if (!seen_.id.empty() && seenFor(seen_) > 0.47 && current->expiresAt > outside.time.now()) {
            EXPECT_TRUE(state().actionReady) << "a person could never answer";
        }
    }
    void click()
    {
        clicked_ = true;
        if (interaction().current())
            decide(anyDecision());
    }
    void staleClick()
    {
        clicked_ = true;
        if (!known_.empty())
            model.decide(known_[below(known_.size())], anyDecision());
    }
    void press()
    {
        if (interaction().current())
            press_ = model.press(*interaction().currentID());
    }
    void release()
    {
        clicked_ = true;
        if (press_)
            model.release(*press_, anyDecision());
    }
    void openOrClose() { interaction().expanded() ? model.collapse() : model.expand(); }
    void movePointer() { model.setPointerInside(!interaction().pointerInside()); }
    void switchRequest() { model.selectAdjacent(below(2) == 0 ? 1 : -1); }
    void demonstrate()
    {
        model.showDemo(below(2) == 0 ? Demo::hook : Demo::native);
        if (state().isDemo)
            demonstrations_.insert(*interaction().currentID());
    }
    void endDemonstration() { model.endDemo(); }
    void leaveReceipt() { model.dismissFeedback(); }
    void clickOutside() { model.handleOutsideInteraction(); }

    static constexpr double rounding = 1e-6;

    std::mt19937 random_;
    int nextID_ = 0;
    Seen seen_;
    bool clicked_ = false; // The operation that runs is a click of a person.
    std::optional<AppModel::ArmedPress> press_;
    std::vector<ApprovalRequest> known_;
    std::set<std::string> demonstrations_;
    std::set<std::string> decided_;
};

TEST(AppModelWalk, decidesOnlyWhatAPersonSawAndClicked)
{
    std::size_t decisions = 0;
    constexpr unsigned first = 2'279'277'199; // It once met a timer that outlived its receipt.
    for (unsigned seed = first; seed != first + 40; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Walk walk(seed);
        for (int step = 0; step < 500 && !testing::Test::HasFailure(); ++step)
            walk.step();
        decisions += walk.decisions();
    }
    EXPECT_GT(decisions, 100U) << "the walk must come to where it can fail";
}

} // namespace
} // namespace notch
