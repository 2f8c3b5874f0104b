// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Rehearsal/StartedModel.h"

#include <array>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace notch {

// A started model that tells its state as a text in which nothing is left that no rule reads, and
// that watches from outside whether a promise is broken. To the words of StartedModel it adds:
//
//   brief A                 a hook asks whose time is over half a second later
//   press A, release        with the pointer, which is a click on the desktop, too
//   key A, keyUp            with the keyboard, at the same time perhaps
//   lateScan Q, lateEnd A   what was seen before an application changed, told after it
//   soon, until             to the last grain before the next bound of a rule, and to the bound
//   age                     until a turn's end is about to lapse
class ExploredModel final : public StartedModel {
public:
    explicit ExploredModel(Seconds grain);

    // False: nothing can come of it now.
    bool isPossible(std::string_view words) const;
    void take(const std::string& words);
    // After `words`, an answer that does not tell of the state.
    std::string key() const;
    // The notch is closed or open for one.
    bool hasReminder() const { return reminder().has_value(); }
    // As if the host were one process in the background. Changes this model.
    void openForHostBehind();
    // The first promise that was broken; empty: none.
    const std::string& broken() const { return broken_; }
    // How long the last "soon" or "until" waited.
    Seconds waited() const { return waited_; }
    // A person who looks and waits comes to an armed button for each request that waits. Changes
    // this model.
    void lookForDeadEnds();

private:
    // Since when it is so.
    template <class Value> struct Held {
        Value value{};
        Uptime since;
        unsigned changes = 0;

        void be(Value now, Uptime time)
        {
            if (value != now)
                *this = {std::move(now), time, changes + 1};
        }
    };
    struct Press {
        AppModel::ArmedPress granted;
        unsigned armedTime = 0; // The count of the armed time that it was made in.
        unsigned sight = 0; // The count of what was to be seen then,
        bool seenLong = false; // for the guard delay.
    };
    enum class Control { pointer, keys };
    struct Before {
        Held<std::optional<ShownDecision>> seen;
        bool reminderReady = false;
        NotchInteraction interaction;
    };

    void promise(bool kept, const char* text);
    void addWords();
    void look();
    void judge(const std::string& words);
    void judgeDecision(const std::string& words, const std::string& call);
    void judgeActivation(const std::string& words);
    void judgeReminding();
    void judgeLook();
    void judgeTimers();

    void ask(ApprovalRequest request, Seconds lifetime);
    void press(Control control);
    void release(Control control);
    std::optional<Seconds> untilBound() const;
    void noteClick();
    void wait(Seconds time);
    void end(const CompletionEvent& event);
    bool isSeen(const std::optional<ShownDecision>& shown) const;

    std::string requestsKey() const;
    std::string displayKey(std::string& names) const;
    std::string questionKey() const;
    std::string turnKey() const;
    std::string timersKey() const;
    bool isTick(Seconds delay) const;
    std::string grains(Seconds time) const;
    std::string grainsLeft(Seconds time, Seconds longest = Seconds{10}) const;

    Uptime uptime() const { return fakes.time.uptime(); }
    Date now() const { return fakes.time.now(); }

    const Seconds grain_;
    std::string broken_;
    Seconds waited_{};
    Before before_; // The operation that is under way.
    Held<std::optional<ShownDecision>> seen_; // On the screen, open, without a receipt.
    Held<std::optional<std::string>> armed_; // The request whose buttons look armed.
    unsigned armedTimes_ = 0;
    Held<std::optional<ShownDecision>> told_; // What the model saw on the screen.
    std::array<std::optional<Press>, 2> presses_; // By control.
    std::optional<Press> released_; // In this operation.
    std::vector<Uptime> clicks_; // Those that a press may still follow too soon.
    std::set<std::string> decided_; // And not asked anew.
    bool stopped_ = false;

    enum class Turn { none, open, over };
    Turn turn_ = Turn::none; // Of the one session.
    Date turnChangedAt_;
    Date turnEndedAt_;
};

} // namespace notch
