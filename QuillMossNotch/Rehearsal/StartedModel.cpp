// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Rehearsal/StartedModel.h"

#include "Rehearsal/InteractionText.h"

#include <algorithm>
#include <utility>

namespace notch {

StartedModel::StartedModel(Seconds grain)
    : fakes(grain)
{
    model.start();
    fakes.calls.clear();
    operations_ = {
        {"ask", [this] { fakes.request(next()); }},
        {"card", [this] { fakes.card(next()); }},
        {"gone", [this] { fakes.remove(next()); }},
        {"refuse", [this] { fakes.server.hookWaits = fakes.monitor.cardVerifies = false; }},
        {"wait", [this] { fakes.time.advance(Seconds{next<double>()}); }},
        {"clock", [this] { fakes.time.setWallClock(Seconds{next<double>()}); }},
        {"scan", [this] { fakes.see(FakeDependencies::question(next())); }},
        {"page2", [this] { fakes.see(FakeDependencies::question(next(), 2)); }},
        {"unseen", [this] { fakes.see(QuestionReminderState::Absent{}); }},
        {"unreadable", [this] { fakes.see(QuestionReminderState::Unavailable{}); }},
        {"question", [this] { question("Q"); }},
        {"goAnswer", [this] { answer(model.handoffQuestion(questionToken())); }},
        {"begin", [this] { fakes.tell(fakes.turnStart(next())); }},
        {"end", [this] { fakes.tell(fakes.turnEnd(next())); }},
        {"turn", [this] { turn("A"); }},
        {"openTurn", [this] { answer(model.activateCompletion(turnToken())); }},
        {"remind", [this] { remind(); }},
        {"noted", [this] { model.dismissCompletion(turnToken()); }},
        {"keepTokens", [this] { keepTokens(); }},
        {"goAnswerLate", [this] { answer(model.handoffQuestion(questionToken_)); }},
        {"openTurnLate", [this] { answer(model.activateCompletion(turnToken_)); }},
        {"notedLate", [this] { model.dismissCompletion(turnToken_); }},
        {"front", [this] { host().isActive = true; }},
        {"back", [this] { host().isActive = false; }},
        {"hide", [this] { host().isHidden = true; }},
        {"second", [this] { fakes.host.processes.push_back({.pid = 8}); }},
        {"deaf", [this] { fakes.host.activates = false; }},
        {"switchApps", [this] { fakes.applicationEvents.changed(); }},
        {"status", [this] { answer(state().completionStatus); }},
        {"noHost", [this] { fakes.workspace.installed = {}; }},
        {"onlyAI",
            [this] { fakes.workspace.installed = {Workspace::HostApplication::quillmossAI}; }},
        {"withoutAI",
            [this] { fakes.workspace.installed = {Workspace::HostApplication::quillmoss}; }},
        {"on", [this] { model.setPreference(preference(), true); }},
        {"off", [this] { model.setPreference(preference(), false); }},
        {"message", [this] { answer(state().message); }},
        {"failure", [this] { answer(state().failure.value_or("none")); }},
        {"open", [this] { model.expand(); }},
        {"close", [this] { model.collapse(); }},
        {"enter", [this] { model.setPointerInside(true); }},
        {"leave", [this] { model.setPointerInside(false); }},
        {"clickOutside", [this] { model.handleOutsideInteraction(); }},
        {"switch", [this] { model.selectAdjacent(next<int>()); }},
        {"select", [this] { model.select(next()); }},
        {"details", [this] { model.setShowAllParameters(true); }},
        {"copy", [this] { copy(); }},
        {"pasted", [this] { answer(fakes.pasteboard.text); }},
        {"watched", [this] { model.setDisplay(&fakes.display); }},
        {"frame", [this] { show(decision()); }},
        {"blank", [this] { show(std::nullopt); }},
        {"move", [this] { move(); }},
        {"quietly", [this] { quiet_ = true; }},
        {"click", [this] { model.notePress(*fakes.display.inputTime()); }},
        {"press", [this] { press_ = model.press(id(), fakes.display.inputTime()); }},
        {"pressed", [this] { answer(press_.has_value()); }},
        {"release", [this] { release(); }},
        {"allow", [this] { model.decide(fakes.hookRequest(id()), Decision::allow); }},
        {"deny", [this] { model.decide(fakes.hookRequest(id()), Decision::deny); }},
        {"handBack", [this] { model.decide(fakes.hookRequest(id()), Decision::passthrough); }},
        {"dismiss", [this] { model.dismissFeedback(); }},
        {"demo", [this] { model.showDemo(next() == "native" ? Demo::native : Demo::hook); }},
        {"endDemo", [this] { model.endDemo(); }},
        {"host", [this] { model.openHost(next()); }},
        {"watch", [this] { model.refreshNativeMonitoring(); }},
    };
}

std::optional<ShownDecision> StartedModel::decision() const
{
    if (interaction().feedback() || !interaction().expanded())
        return std::nullopt;
    if (const auto id = interaction().currentID())
        return ShownDecision{*id, interaction().showAllParameters, {}, {}};
    const auto token = reminder();
    return token ? std::optional(ShownDecision{{}, false, {}, token}) : std::nullopt;
}

std::optional<UUID> StartedModel::reminder() const
{
    if (!interaction().requests().empty() || interaction().feedback())
        return std::nullopt;
    if (state().questionState.visible())
        return state().questionState.token()->value;
    const auto& turn = state().completionState.current;
    return turn ? std::optional(turn->token) : std::nullopt;
}

void StartedModel::show(const std::optional<ShownDecision>& shown)
{
    fakes.display.shown = shown;
    if (!std::exchange(quiet_, false))
        model.displayChanged();
}

void StartedModel::move()
{
    auto moved = fakes.display.shown;
    if (moved)
        ++moved->buttons[1].y;
    show(moved);
}

std::string StartedModel::id()
{
    const auto word = next();
    return word == "demo" ? interaction().currentID().value_or(word) : word;
}

Preference StartedModel::preference()
{
    return *std::ranges::find(allPreferences, next(), [](auto each) { return name(each); });
}

void StartedModel::release()
{
    if (press_)
        model.release(*press_, Decision::allow);
}

std::string StartedModel::stateText()
{
    auto text = printed(interaction(), state().actionReady ? " armed" : "");
    text += state().isDemo ? " trying" : "";
    text += questionText() + turnText();
    text += state().copiedRequestID ? " copied " + *state().copiedRequestID : "";
    const auto* separator = " -> ";
    for (const auto& call : fakes.takeCalls())
        text += std::exchange(separator, ", ") + call;
    return text;
}

std::string StartedModel::questionText() const
{
    const auto& question = state().questionState;
    if (!question.visible())
        return {};
    const bool failed =
        question.handoffStatus() == QuestionReminderState::HandoffStatus::activationFailed;
    return " question " + question.visible()->flowID
         + (question.visible()->currentPage == 2 ? " page 2" : "")
         + (state().questionActionReady ? " ready" : "") + (failed ? " failed" : "");
}

std::string StartedModel::turnText() const
{
    const auto& turn = state().completionState;
    const auto waiting = turn.queuedCount - (turn.current ? 1 : 0);
    return (turn.current ? " turn " + turn.current->event.sessionID : "")
         + (state().completionActionReady ? " ready" : "")
         + (turn.current && state().completionActivationFailed ? " failed" : "")
         + (waiting > 0 ? " queued " + std::to_string(waiting) : "");
}

void StartedModel::question(const std::string& flow)
{
    fakes.see(FakeDependencies::question(flow));
    fakes.see(FakeDependencies::question(flow));
}

void StartedModel::turn(const std::string& session)
{
    fakes.tell(fakes.turnStart(session));
    fakes.tell(fakes.turnEnd(session));
    fakes.time.advance(Seconds{0.82});
}

void StartedModel::copy()
{
    if (const auto* request = interaction().current())
        model.copyRequest(*request);
}

// Switches them on, as a person has done at some time before.
void StartedModel::remind()
{
    model.setPreference(Preference::completionRemindersEnabled, true);
    fakes.takeCalls();
}

void StartedModel::keepTokens()
{
    questionToken_ = questionToken();
    turnToken_ = turnToken();
}

// Without a question, as without a reminder below, it is that of none.
QuestionReminderState::PresentationToken StartedModel::questionToken() const
{
    return state().questionState.token().value_or(QuestionReminderState::PresentationToken{});
}

UUID StartedModel::turnToken() const
{
    const auto& current = state().completionState.current;
    return current ? current->token : UUID();
}

std::string playedEach(const std::string& frame, std::string_view trace)
{
    const auto place = frame.find("...");
    return retold(trace, [&](const std::string& operations) {
        return StartedModel().after(std::string(frame).replace(place, 3, operations));
    });
}

} // namespace notch
