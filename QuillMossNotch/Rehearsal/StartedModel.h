// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Rehearsal/FakeDependencies.h"
#include "Rehearsal/TracePlayer.h"

#include <optional>
#include <string>
#include <string_view>

namespace notch {

// A model after a quiet launch, on virtual time, and the language of its traces:
//
//   ask A, wait 1 | open [A] armed
//   deny A        | open receipt denied -> server.decide A deny
//
// Requests go by their ID, a demonstration by "demo". "press" answers whether it was one, "copy"
// what went to the pasteboard, "message" the line of status text, "failure" the notch's. Questions
// go by their flow, turns by their session; "question" and "turn" bring up one of each. "…Late"
// uses the token that was kept. "remind" switches the reminders of turns on, which they are not at
// first.
//
// From "watched" on the model has a screen: "frame" draws what there is to press, "blank" and
// "move" take it away and to another place, which "quietly" keeps from the model; "click" is a
// press somewhere on the desktop.
class StartedModel : public TracePlayer {
public:
    // With a grain, works run at its multiples only.
    explicit StartedModel(Seconds grain = {});

    const AppModelState& state() const { return model.state(); }
    const NotchInteraction& interaction() const { return model.state().interaction; }

    // What there is to press, as it would be drawn.
    std::optional<ShownDecision> decision() const;
    // The reminder that the notch is free for.
    std::optional<UUID> reminder() const;
    void show(const std::optional<ShownDecision>& shown);

    FakeDependencies fakes;
    AppModel model{fakes.seams()};

private:
    std::string id();
    Preference preference();

    std::string stateText() override;
    std::string questionText() const;
    std::string turnText() const;
    void question(const std::string& flow);
    void turn(const std::string& session);
    HostApplication& host() { return fakes.host.processes.front(); }
    UUID turnToken() const;
    void remind();
    void copy();
    void release();
    void move();
    void keepTokens();
    QuestionReminderState::PresentationToken questionToken() const;

    bool quiet_ = false;
    std::optional<AppModel::ArmedPress> press_;
    QuestionReminderState::PresentationToken questionToken_;
    UUID turnToken_;
};

// The trace as its lines play, each on a model of its own, its operations in the place of "..." in
// `frame`.
std::string playedEach(const std::string& frame, std::string_view trace);

} // namespace notch
