// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "support/FakeOutside.h"
#include "support/InteractionTrace.h"
#include "support/TracePlayer.h"

#include <gtest/gtest.h>

namespace notch {

// A model after a quiet launch, on virtual time, and the language of its traces:
//
//   ask A, wait 1 | open [A] armed
//   deny A        | open receipt denied -> server.decide A deny
//
// Requests go by their ID, a demonstration by "demo". "press" answers whether it was one, "copy"
// what went to the pasteboard, "message" the line of status text. From "listen" on the calls are
// those to the reminder half, up to there the others.
class StartedModel : public TracePlayer {
public:
    StartedModel()
    {
        model.start();
        outside.calls.clear();
        addWorld();
        addPerson();
        for (const auto decision : allDecisions)
            operations_[std::string(name(decision))] = [this, decision](Words& words) {
                model.decide(outside.hookRequest(id(words)), decision);
            };
    }

    const AppModelState& state() const { return model.state(); }
    const NotchInteraction& interaction() const { return model.state().interaction; }

    FakeOutside outside;
    AppModel model{outside.seams()};

protected:
    std::string id(Words& words) const
    {
        const auto word = next(words);
        return word == "demo" ? *interaction().currentID() : word;
    }

private:
    void addWorld()
    {
        using enum Workspace::HostApplication;
        operations_.insert({
            {"ask", [this](Words& words) { outside.request(next(words)); }},
            {"card", [this](Words& words) { outside.card(next(words)); }},
            {"gone", [this](Words& words) { outside.remove(next(words)); }},
            {"wait", [this](Words& words) { outside.time.advance(Seconds{next<double>(words)}); }},
            {"clock",
                [this](Words& words) { outside.time.setWallClock(Seconds{next<double>(words)}); }},
            {"question", [this](Words&) { outside.reminders.question = true; }},
            {"turn", [this](Words&) { outside.reminders.completion = true; }},
            {"refuse",
                [this](
                    Words&) { outside.server.hookWaits = outside.monitor.cardVerifies = false; }},
            {"without",
                [this](Words& words) {
                    outside.workspace.installed.erase(
                        next(words) == "quillmossAI" ? quillmossAI : quillmoss);
                }},
            {"noHost", [this](Words&) { outside.workspace.installed.clear(); }},
            {"noHover",
                [this](Words&) { outside.preferences.set(Preference::hoverToExpand, false); }},
            {"noCollapse",
                [this](Words&) { outside.preferences.set(Preference::autoCollapse, false); }},
            {"listen",
                [this](Words&) {
                    outside.calls.clear();
                    listens_ = true;
                }},
            {"message", [this](Words&) { answer(state().message); }},
        });
    }
    void addPerson()
    {
        operations_.insert({
            {"open", [this](Words&) { model.expand(); }},
            {"close", [this](Words&) { model.collapse(); }},
            {"enter", [this](Words&) { model.setPointerInside(true); }},
            {"leave", [this](Words&) { model.setPointerInside(false); }},
            {"clickOutside", [this](Words&) { model.handleOutsideInteraction(); }},
            {"switch", [this](Words& words) { model.selectAdjacent(next<int>(words)); }},
            {"select", [this](Words& words) { model.select(next(words)); }},
            {"details", [this](Words&) { model.setShowAllParameters(true); }},
            {"copy",
                [this](Words&) {
                    model.copyRequest(*interaction().current());
                    answer(outside.pasteboard.text);
                }},
            {"press",
                [this](Words& words) {
                    press_ = model.press(id(words));
                    answer(press_.has_value());
                }},
            {"release", [this](Words&) { model.release(press_.value(), Decision::allow); }},
            {"dismiss", [this](Words&) { model.dismissFeedback(); }},
            {"demo",
                [this](Words& words) {
                    model.showDemo(next(words) == "native" ? Demo::native : Demo::hook);
                }},
            {"endDemo", [this](Words&) { model.endDemo(); }},
            {"host", [this](Words& words) { model.openHost(next(words)); }},
        });
    }

    std::string stateText() override
    {
        auto text = printed(interaction(), state().actionReady ? " armed" : "");
        text += state().isDemo ? " trying" : "";
        text += state().questionVisible ? " question" : "";
        text += state().completionVisible ? " turn" : "";
        text += state().copiedRequestID ? " copied " + *state().copiedRequestID : "";
        const auto* separator = " -> ";
        const std::string reminders = "reminders.";
        for (const auto& call : outside.takeCalls()) {
            if (call.starts_with(reminders) == listens_)
                text +=
                    std::exchange(separator, ", ") + call.substr(listens_ ? reminders.size() : 0);
        }
        return text;
    }

    bool listens_ = false;
    std::optional<AppModel::ArmedPress> press_;
};

class AppModelTest : public testing::Test, protected StartedModel {
protected:
    void expectTrace(std::string_view trace) { EXPECT_EQ(played(trace), trace); }
};

// Each line on a model of its own, its operations in the place of "..." in `frame`.
inline void expectEach(const std::string& frame, std::string_view trace)
{
    const auto gap = frame.find("...");
    EXPECT_EQ(retold(trace,
                  [&](const auto& operations) {
                      return StartedModel().after(std::string(frame).replace(gap, 3, operations));
                  }),
        trace);
}

} // namespace notch
