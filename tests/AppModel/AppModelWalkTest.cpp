// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppModel/AppModelTest.h"

#include <random>

namespace notch {
namespace {

// Drives a model at random and watches, from outside, that no decision leaves and no host comes to
// the front and no reminder is put away but by a click on what the person has had before their eyes
// for the whole guard delay, and that reminders leave the requests alone.
class Walk : StartedModel {
public:
    explicit Walk(unsigned seed)
        : random_(seed)
        , quiet_(seed % 2 == 0)
    {
        model.setDisplay(&fakes.display);
        model.setPreference(Preference::completionRemindersEnabled, true);
        model.subscribe([this] { look(); });
    }

    void step()
    {
        const auto index = below(steps_.size());
        if (quiet_ && index < stepsThatAsk && below(8) != 0)
            return;
        const auto& step = steps_[index];
        SCOPED_TRACE(step.name);
        fakes.server.hookWaits = below(4) != 0;
        const auto before = seen_;
        const auto interactionBefore = interaction();
        step.take();
        judgeDecisions(before, step.clicks);
        if (step.reminds)
            judgeReminder(interactionBefore);
        if (below(4) != 0)
            show(decision());
        look();
    }

    std::size_t decisions() const { return decided_.size(); }
    std::size_t activations() const { return activated_.size(); }

private:
    struct Step {
        const char* name;
        std::function<void()> take;
        bool clicks = false; // A person does, on a button.
        bool reminds = false; // It is a matter of reminders.
    };
    // What a person could press: on the screen, open, without a receipt over it.
    struct Seen {
        std::optional<ShownDecision> decision;
        double since = 0;
    };

    std::size_t below(std::size_t end) { return random_() % end; }
    Decision anyDecision() { return allDecisions[below(allDecisions.size())]; }
    double seenFor(const Seen& seen) const { return fakes.time.uptime().seconds - seen.since; }

    // After every operation, those of timers included.
    void look()
    {
        const auto& shown = fakes.display.shown;
        auto present = decision();
        if (present && shown)
            present->buttons = shown->buttons;
        const auto seen = shown == present ? shown : std::nullopt;
        if (seen != seen_.decision)
            seen_ = {seen, fakes.time.uptime().seconds};
        std::set<std::string> ids;
        for (const auto& request : interaction().requests())
            EXPECT_TRUE(ids.insert(request.id).second) << request.id << " is queued twice";
        EXPECT_TRUE(!state().actionReady || decision());
    }

    void judgeDecisions(const Seen& before, bool clicked)
    {
        for (const auto& call : fakes.takeCalls()) {
            if (call.starts_with("activate"))
                judgeActivation(before);
            const auto at = call.find(".decide ");
            if (at == std::string::npos)
                continue;
            const auto id = call.substr(at + 8, call.rfind(' ') - at - 8);
            EXPECT_TRUE(clicked);
            ASSERT_TRUE(before.decision) << "nothing was on screen";
            EXPECT_EQ(id, before.decision->requestID) << "another one was on screen";
            EXPECT_GE(seenFor(before), 0.45 - rounding);
            EXPECT_LT(id.size(), UUID::random().text().size()) << "it was a demonstration";
            EXPECT_TRUE(decided_.insert(id).second) << id << " was decided twice";
        }
    }

    void expectSeen(const Seen& before, UUID reminder)
    {
        ASSERT_TRUE(before.decision) << "nothing was on screen";
        EXPECT_EQ(before.decision->reminder, reminder) << "another one was on screen";
        EXPECT_GE(seenFor(before), 0.45 - rounding);
    }
    void judgeActivation(const Seen& before)
    {
        const auto clicked = std::exchange(clicked_, std::nullopt);
        ASSERT_TRUE(clicked) << "nobody has clicked";
        expectSeen(before, *clicked);
        EXPECT_TRUE(activated_.insert(*clicked).second) << "twice for one reminder";
    }
    // A reminder may open the notch, which begins the guard delay anew, and close it.
    void judgeReminder(const NotchInteraction& before)
    {
        EXPECT_EQ(interaction().requests(), before.requests());
        EXPECT_EQ(interaction().selectedID(), before.selectedID());
        EXPECT_EQ(interaction().feedback(), before.feedback());
        EXPECT_TRUE(
            interaction().readyAt() == before.readyAt()
            || interaction().readyAt() == fakes.time.now() + NotchInteraction::handoffDelay);
    }
    void scan()
    {
        const auto flow = std::to_string(below(3) == 0 ? nextID_++ : nextID_);
        const auto question = FakeDependencies::question(flow, 1 + static_cast<int>(below(8)) / 7);
        fakes.see(question);
        fakes.see(question);
    }
    void turn()
    {
        const std::string session = below(2) == 0 ? "A" : "B";
        fakes.tell(fakes.turnStart(session));
        fakes.tell(fakes.turnEnd(session));
    }
    void clickReminder()
    {
        if (const auto shown = reminder(); shown && below(4) != 0)
            tokens_.push_back(*shown);
        if (tokens_.empty())
            return;
        clicked_ = tokens_.back();
        model.handoffQuestion({*clicked_});
        model.activateCompletion(*clicked_);
        if (below(4) == 0)
            dismissReminder(*clicked_);
    }
    void dismissReminder(UUID token)
    {
        const auto before = seen_;
        const bool waited = reminder() == token;
        model.dismissCompletion(token);
        if (waited && reminder() != token)
            expectSeen(before, token);
    }

    void ask(ApprovalRequest request)
    {
        request.id = std::to_string(nextID_++);
        request.expiresAt = fakes.time.now() + Seconds{0.1 * static_cast<double>(below(100))};
        known_.push_back(request);
        fakes.report(fakes.server.callbacks.onRequest, request);
    }
    void askTwice()
    {
        const auto waiting = interaction().requests();
        if (!waiting.empty() && !state().isDemo)
            fakes.report(fakes.server.callbacks.onRequest, waiting.back());
    }
    void hookGoes()
    {
        const auto& candidates = below(4) == 0 ? known_ : interaction().requests();
        if (!candidates.empty())
            fakes.remove(std::string(candidates[below(candidates.size())].id));
    }
    void wait()
    {
        fakes.time.advance(Seconds{0.05 * static_cast<double>(1 + below(12))});
        const auto* current = interaction().current();
        if (seen_.decision && current && seenFor(seen_) > 0.47
            && current->expiresAt > fakes.time.now()) {
            EXPECT_TRUE(state().actionReady) << "a person could never answer";
        }
    }
    void click()
    {
        if (const auto* current = interaction().current())
            model.decide(*current, anyDecision());
    }
    void staleClick()
    {
        if (!known_.empty())
            model.decide(known_[below(known_.size())], anyDecision());
    }
    // With or without a click that is handled before the model is told.
    void change(const char* what)
    {
        if (!fakes.display.shown)
            return;
        play(std::string("quietly ") + what);
        look();
        if (below(2) == 0)
            click();
        model.displayChanged();
    }
    void press()
    {
        if (interaction().current())
            press_ = model.press(*interaction().currentID());
    }
    void release()
    {
        if (press_)
            model.release(*press_, anyDecision());
    }

    static constexpr double rounding = 1e-6;
    static constexpr std::size_t stepsThatAsk = 4; // The first ones.

    const std::vector<Step> steps_{
        {"hook asks", [this] { ask(fakes.hookRequest("")); }},
        {"card appears", [this] { ask(fakes.nativeRequest("")); }},
        {"hook asks twice", [this] { askTwice(); }},
        {"demonstrate", [this] { play(below(2) == 0 ? "demo hook" : "demo native"); }},
        {"hook goes", [this] { hookGoes(); }},
        {"hook goes", [this] { hookGoes(); }},
        {"wait", [this] { wait(); }},
        {"wait", [this] { wait(); }},
        {"wait", [this] { wait(); }},
        {"disappear", [this] { change("blank"); }},
        {"move", [this] { change("move"); }},
        {"details", [this] { model.setShowAllParameters(below(2) == 0); }},
        {"click", [this] { click(); }, true},
        {"click", [this] { click(); }, true},
        {"stale click", [this] { staleClick(); }, true},
        {"press", [this] { press(); }},
        {"release", [this] { release(); }, true},
        {"open or close", [this] { play(interaction().expanded() ? "close" : "open"); }},
        {"pointer", [this] { play(interaction().pointerInside() ? "leave" : "enter"); }},
        {"switch", [this] { play(below(2) == 0 ? "switch 1" : "switch -1"); }},
        {"end the demonstration", [this] { play("endDemo"); }},
        {"leave the receipt", [this] { play("dismiss"); }},
        {"click outside", [this] { play("clickOutside"); }},
        {"question", [this] { scan(); }, false, true},
        {"no question", [this] { play("unseen"); }, false, true},
        {"turn", [this] { turn(); }, false, true},
        {"click on a reminder", [this] { clickReminder(); }, false, true},
        {"click on a reminder", [this] { clickReminder(); }, false, true},
        {"host", [this] { play(below(3) == 0 ? "front" : "back"); }, false, true},
        {"applications change", [this] { play("switchApps"); }, false, true},
        {"the host does not come", [this] { fakes.host.activates = below(2) == 0; }},
    };
    std::mt19937 random_;
    const bool quiet_; // Few requests, so that reminders have the notch.
    int nextID_ = 0;
    Seen seen_;
    std::optional<AppModel::ArmedPress> press_;
    std::vector<ApprovalRequest> known_;
    std::set<std::string> decided_;
    std::vector<UUID> tokens_; // Seen on show.
    std::optional<UUID> clicked_; // In this step, for this reminder.
    std::set<UUID> activated_;
};

TEST(AppModelWalk, decidesOnlyWhatAPersonSawAndClicked)
{
    std::size_t decisions = 0;
    std::size_t activations = 0;
    constexpr unsigned first = 2'279'277'199; // It once met a timer that outlived its receipt.
    for (unsigned seed = first; seed != first + 40; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Walk walk(seed);
        for (int step = 0; step < 1000 && !testing::Test::HasFailure(); ++step)
            walk.step();
        decisions += walk.decisions();
        activations += walk.activations();
    }
    EXPECT_GT(decisions, 50U) << "the walk must come to where it can fail";
    EXPECT_GT(activations, 5U);
}

} // namespace
} // namespace notch
