// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/FakeHost.h"
#include "Native/Monitor/NativeMonitor.h"
#include "support/HostTrees.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

namespace notch {

using Lines = std::vector<std::string>;

inline const auto& cardTree = groupedCardTree;
inline const std::string emptyTree = "Window #w @0,0,600,400 \"Chat\"\n";
inline const std::map<std::string, std::string> trees{{"card", cardTree}, {"no card", emptyTree},
    {"another card", changedText(cardTree, "build => dist")}, {"a question", questionTree},
    {"a control", emptyTree + "  Button #b \"上一题\""}};

// A monitor on a fake host. What it says and does is written down in order: "offer", "removal",
// "status TEXT", "question waiting", "timer on".
class MonitorOnFakeHost : public testing::Test {
protected:
    void start(bool approvals = true, bool questions = false)
    {
        monitor.start({.onRequest =
                              [this](const ApprovalRequest& request) {
                                  requests.push_back(request);
                                  say("offer");
                              },
                          .onRemoval =
                              [this](const std::string& id) {
                                  EXPECT_EQ(id, requests.back().id);
                                  say("removal");
                              },
                          .onStatus = [this](const std::string& text) { say("status " + text); },
                          .onQuestion = questions ? onQuestion() : NativeApprovals::OnQuestion()},
            {.approvals = approvals});
    }
    NativeApprovals::OnQuestion onQuestion()
    {
        return [this](const QuestionReminderState::Observation& observation, Uptime capturedAt) {
            captured = capturedAt;
            if (const auto* question = std::get_if<QuestionReminder>(&observation))
                flows.push_back(question->flowID);
            constexpr std::array names{"unavailable", "absent", "waiting"};
            say(std::string("question ") + names[observation.index()]);
        };
    }
    void say(const std::string& line)
    {
        said.push_back(line);
        if (line.starts_with(onceAfter) && !onceAfter.empty()) {
            onceAfter.clear();
            then();
        }
    }
    // Does that once, right after the line.
    void after(const std::string& line, std::function<void()> work)
    {
        onceAfter = line;
        then = std::move(work);
    }
    // Something that happens to the host (FakeHost::apply), or to the monitor: "stop", "approvals
    // off", "show TREE"; at some moment, too: "at CALL: CHANGE".
    void apply(const std::string& change)
    {
        if (const auto colon = change.find(": "); colon != change.npos)
            host.once(change.substr(3, colon - 3), [=, this] { apply(change.substr(colon + 2)); });
        else if (change.starts_with("show "))
            host.show(trees.at(change.substr(5)));
        else if (change == "stop")
            monitor.stop();
        else if (change == "approvals off")
            start(false);
        else
            host.apply(change);
    }
    // A fresh host and a fresh run, with the card on offer.
    void offerAnew()
    {
        host = FakeHost(cardTree);
        restart();
        tick();
        said.clear();
    }
    void restart()
    {
        monitor.stop();
        start();
    }
    Lines tick()
    {
        said.clear();
        monitor.tick();
        return std::exchange(said, {});
    }
    bool decide(Decision decision = Decision::allow)
    {
        return monitor.decide(requests.back().id, decision);
    }
    static std::string plain(std::string_view text) { return std::string(text); }
    static std::string same(std::string_view) { return "same"; }
    static std::string status(std::string_view text) { return "status " + std::string(text); }

    FakeHost host{cardTree};
    NativeMonitor monitor{
        {host, host, host, [this](std::string_view text) { return digest(text); }},
        [this](bool on) { say(on ? "timer on" : "timer off"); }};
    // The text itself, so that a fingerprint differs whenever what it is made from does.
    std::function<std::string(std::string_view)> digest = plain;
    std::vector<ApprovalRequest> requests;
    Lines said;
    Lines flows;
    Uptime captured;
    std::string onceAfter;
    std::function<void()> then;
};

} // namespace notch
