// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Interaction/CompletionReminderState.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace notch {

// Plays words on a CompletionReminderState:
//
//   @T ~S            the time is T; S seconds pass
//   +A/1 -A/1        turn 1 of session A starts, ends; +A for a start that names no turn
//   tick claim claim! (when nothing may open) collapse dismiss stale (another's token) clear off
//   reset
//
// An event may go on with ",agent=X", ",pid=N" (7 else; 0 for no host), ",age=SECONDS", ",front"
// and a reason ("completed" else; "none").
class CompletionPlayer {
public:
    struct Arrival {
        CompletionEvent event;
        std::optional<std::int32_t> pid = 7;
        bool background = true;
    };

    // The state behind the last word: the current reminder or "-", "!" once it is presented, "+N"
    // if N wait; before it ">" if a claim was granted.
    std::string play(const std::string& script)
    {
        std::istringstream words(script);
        std::string granted;
        for (std::string word; words >> word;)
            granted = apply(word) ? ">" : "";
        return granted + printedState();
    }

    const CompletionReminderState& state() const { return state_; }
    const Arrival& lastArrival() const { return arrival_; }
    Date now() const { return now_; }

private:
    bool apply(const std::string& word)
    {
        if (word[0] == '@')
            now_ = Date{std::stod(word.substr(1))};
        else if (word[0] == '~')
            now_ = now_ + Seconds{std::stod(word.substr(1))};
        else if (word[0] == '+' || word[0] == '-')
            observe(word);
        else if (word == "tick")
            state_.refresh(now_);
        else if (word == "claim" || word == "claim!")
            return state_.claimAutoExpansion(word == "claim", now_).has_value();
        else if (word == "collapse")
            state_.collapse();
        else if (word == "dismiss" || word == "stale")
            state_.dismiss(
                word == "dismiss" && state_.current() ? state_.current()->token : UUID::random());
        else if (word == "clear")
            state_.clearPresentation();
        else if (word == "off")
            state_.observe({}, 7, true, false, now_);
        else if (word == "reset")
            state_.reset();
        else
            ADD_FAILURE() << "no such operation: " << word;
        return false;
    }

    void observe(const std::string& word)
    {
        std::istringstream parts(word.substr(1));
        std::string turn;
        std::getline(parts, turn, ',');
        const auto slash = turn.find('/');
        arrival_ = {.event = {.id = UUID::random().text(),
                        .sessionID = turn.substr(0, slash),
                        .observedAt = now_}};
        if (slash != turn.npos)
            arrival_.event.generationID = turn.substr(slash + 1);
        if (word[0] == '-') {
            arrival_.event.kind = CompletionEvent::Kind::ended;
            arrival_.event.reason = CompletionEvent::Reason::completed;
        }
        for (std::string option; std::getline(parts, option, ',');)
            applyOption(option);
        state_.observe(arrival_.event, arrival_.pid, arrival_.background, true, now_);
    }

    void applyOption(const std::string& option)
    {
        const auto value = option.substr(option.find('=') + 1);
        if (option.starts_with("agent="))
            arrival_.event.agentID = value;
        else if (option.starts_with("pid="))
            arrival_.pid = value == "0" ? std::nullopt : std::optional(std::stoi(value));
        else if (option.starts_with("age="))
            arrival_.event.observedAt = now_ + Seconds{-std::stod(value)};
        else if (option == "front")
            arrival_.background = false;
        else if (arrival_.event.kind == CompletionEvent::Kind::ended)
            arrival_.event.reason = parseCompletionReason(option);
    }

    std::string printedState() const
    {
        const auto& current = state_.current();
        const auto waiting = state_.queuedCount() - (current ? 1 : 0);
        return (current ? current->event.sessionID + '/' + *current->event.generationID : "-")
             + (state_.hasBeenPresented() ? "!" : "")
             + (waiting > 0 ? '+' + std::to_string(waiting) : "");
    }

    CompletionReminderState state_;
    Date now_;
    Arrival arrival_;
};

} // namespace notch
