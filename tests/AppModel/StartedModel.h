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
        using enum Workspace::HostApplication;
        operations_ = {
            {"ask", [this] { outside.request(next()); }},
            {"card", [this] { outside.card(next()); }},
            {"gone", [this] { outside.remove(next()); }},
            {"refuse", [this] { outside.server.hookWaits = outside.monitor.cardVerifies = false; }},
            {"wait", [this] { outside.time.advance(Seconds{next<double>()}); }},
            {"clock", [this] { outside.time.setWallClock(Seconds{next<double>()}); }},
            {"question", [this] { outside.reminders.question = true; }},
            {"turn", [this] { outside.reminders.completion = true; }},
            {"noHost", [this] { outside.workspace.installed = {}; }},
            {"onlyAI", [this] { outside.workspace.installed = {quillmossAI}; }},
            {"withoutAI", [this] { outside.workspace.installed = {quillmoss}; }},
            {"on", [this] { model.setPreference(preference(), true); }},
            {"off", [this] { model.setPreference(preference(), false); }},
            {"listen",
                [this] {
                    outside.calls.clear();
                    listens_ = true;
                }},
            {"message", [this] { answer(state().message); }},
            {"open", [this] { model.expand(); }},
            {"close", [this] { model.collapse(); }},
            {"enter", [this] { model.setPointerInside(true); }},
            {"leave", [this] { model.setPointerInside(false); }},
            {"clickOutside", [this] { model.handleOutsideInteraction(); }},
            {"switch", [this] { model.selectAdjacent(next<int>()); }},
            {"select", [this] { model.select(next()); }},
            {"details", [this] { model.setShowAllParameters(true); }},
            {"copy", [this] { model.copyRequest(*interaction().current()); }},
            {"pasted", [this] { answer(outside.pasteboard.text); }},
            {"press", [this] { press_ = model.press(id()); }},
            {"pressed", [this] { answer(press_.has_value()); }},
            {"release", [this] { model.release(press_.value(), Decision::allow); }},
            {"allow", [this] { model.decide(outside.hookRequest(id()), Decision::allow); }},
            {"deny", [this] { model.decide(outside.hookRequest(id()), Decision::deny); }},
            {"handBack",
                [this] { model.decide(outside.hookRequest(id()), Decision::passthrough); }},
            {"dismiss", [this] { model.dismissFeedback(); }},
            {"demo", [this] { model.showDemo(next() == "native" ? Demo::native : Demo::hook); }},
            {"endDemo", [this] { model.endDemo(); }},
            {"host", [this] { model.openHost(next()); }},
            {"watch", [this] { model.refreshNativeMonitoring(); }},
        };
    }

    const AppModelState& state() const { return model.state(); }
    const NotchInteraction& interaction() const { return model.state().interaction; }

    FakeOutside outside;
    AppModel model{outside.seams()};

private:
    std::string id()
    {
        const auto word = next();
        return word == "demo" ? *interaction().currentID() : word;
    }
    Preference preference()
    {
        return *std::ranges::find(allPreferences, next(), [](auto each) { return name(each); });
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
    const auto after = [&](const std::string& operations) {
        return StartedModel().after(std::string(frame).replace(frame.find("..."), 3, operations));
    };
    EXPECT_EQ(retold(trace, after), trace);
}

} // namespace notch
