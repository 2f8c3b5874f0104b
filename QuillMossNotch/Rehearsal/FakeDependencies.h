// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"
#include "Rehearsal/VirtualTime.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace notch {

// What an AppModel told its surroundings, in order; all fakes write into one.
using Calls = std::vector<std::string>;

struct CallNoter {
    explicit CallNoter(Calls& given)
        : calls(given)
    {
    }
    void note(std::string call) { calls.push_back(std::move(call)); }

    Calls& calls;
};

struct FakeApprovalBridge final : ApprovalBridge, CallNoter {
    using CallNoter::CallNoter;

    std::optional<TransportError> start(Callbacks given) override
    {
        note("server.start");
        callbacks = std::move(given);
        return startError;
    }
    bool decide(const std::string& id, Decision decision) override
    {
        note("server.decide " + id + ' ' + std::string(name(decision)));
        if (onDecide)
            onDecide();
        return hookWaits;
    }
    void stop() override { note("server.stop"); }

    Callbacks callbacks;
    std::optional<TransportError> startError;
    std::function<void()> onDecide; // While the decision is on its way.
    bool hookWaits = true; // The hook is still there to take a decision.
};

struct FakeNativeApprovals final : NativeApprovals, CallNoter {
    using CallNoter::CallNoter;

    bool isTrusted() const override { return trusted; }
    void requestAccess() override { note("monitor.requestAccess"); }
    void start(Callbacks given, Watched watched) override
    {
        note(std::string("monitor.start") + (watched.approvals ? " approvals" : "")
             + (given.onQuestion ? " questions" : ""));
        callbacks = std::move(given);
    }
    void stop() override { note("monitor.stop"); }
    bool decide(const std::string& id, Decision decision) override
    {
        note("monitor.decide " + id + ' ' + std::string(name(decision)));
        return cardVerifies;
    }

    Callbacks callbacks;
    bool trusted = false;
    bool cardVerifies = true; // The card is still the one that was read.
};

struct FakeCompletionChannel final : CompletionChannel, CallNoter {
    using CallNoter::CallNoter;

    std::optional<TransportError> start(OnEvent given) override
    {
        note("turnEnds.start");
        onEvent = std::move(given);
        return startError;
    }
    void stop() override
    {
        if (onEvent)
            note("turnEnds.stop");
        onEvent = nullptr;
    }

    OnEvent onEvent;
    std::optional<TransportError> startError;
};

struct FakeApplicationEvents final : ApplicationEvents {
    void observe(std::function<void()> given) override { changed = std::move(given); }

    std::function<void()> changed;
};

// One process of the host, in the background.
struct FakeHost final : HostApplications, CallNoter {
    using CallNoter::CallNoter;

    std::vector<HostApplication> running() const override { return processes; }
    bool activate(std::int32_t pid)
    {
        note("activate " + std::to_string(pid));
        return activates;
    }

    std::vector<HostApplication> processes{{.pid = 7}};
    bool activates = true;
};

// A desktop on which both editions of the host are installed.
struct FakeWorkspace final : Workspace, CallNoter {
    using CallNoter::CallNoter;

    bool isInstalled(HostApplication host) const override { return installed.contains(host); }
    void open(HostApplication host, std::function<void()> failed) override
    {
        note(host == HostApplication::quillmossAI ? "open quillmossAI" : "open quillmoss");
        openFailed = std::move(failed);
    }
    void openAccessibilitySettings() override { note("open settings"); }

    std::set<HostApplication> installed{HostApplication::quillmoss, HostApplication::quillmossAI};
    std::function<void()> openFailed; // Of the last open().
};

// A screen that shows what it is told, and whose server counts in the test's own time.
struct FakeDisplay final : DecisionDisplay {
    explicit FakeDisplay(const Clock& given)
        : clock(given)
    {
    }
    std::optional<ShownDecision> onShow() const override
    {
        ++looks;
        return shown;
    }
    std::optional<InputTime> inputTime() const override
    {
        return InputTime{static_cast<std::uint32_t>(clock.uptime().seconds * 1000)};
    }
    Seconds doubleClickInterval() const override { return Seconds{0.4}; }

    const Clock& clock;
    std::optional<ShownDecision> shown;
    mutable int looks = 0;
};

struct FakePasteboard final : Pasteboard {
    void setText(const std::string& given) override { text = given; }

    std::string text;
};

// Preferences that nobody has written yet.
struct FakePreferences final : Preferences {
    bool isOn(Preference preference) const override
    {
        return written.contains(preference) ? written.at(preference) : defaultValue(preference);
    }
    void set(Preference preference, bool on) override { written[preference] = on; }

    std::map<Preference, bool> written;
};

// Everything outside an AppModel, made up.
//
//   FakeDependencies fakes;
//   AppModel model(fakes.seams());
//   model.start();
//   fakes.request("A"); // A hook asks.
//   fakes.time.advance(Seconds{1});
struct FakeDependencies {
    explicit FakeDependencies(Seconds grain = {})
        : time(grain)
    {
    }

    Calls calls;
    VirtualTime time;
    FakeApprovalBridge server{calls};
    FakeNativeApprovals monitor{calls};
    FakeCompletionChannel completionServer{calls};
    FakeApplicationEvents applicationEvents;
    FakeHost host{calls};
    Result<bool, std::string> hookInstalled{true};
    FakePreferences preferences;
    FakePasteboard pasteboard;
    FakeWorkspace workspace{calls};
    FakeDisplay display{time}; // A model has none until it is given one.
    std::optional<std::vector<std::string>> profiles{{"QuillMoss"}};

    AppModel::Dependencies seams()
    {
        return {
            .clock = time,
            .mainQueue = time,
            .server = server,
            .nativeMonitor = monitor,
            .completionServer = completionServer,
            .applicationEvents = applicationEvents,
            .preferences = preferences,
            .pasteboard = pasteboard,
            .workspace = workspace,
            .configuredProfiles = [this] { return profiles; },
            .completionHookInstalled = [this] { return hookInstalled; },
            .reminders = ReminderCallbacks::of(
                host, [this](std::int32_t pid) { return host.activate(pid); }, preferences),
        };
    }

    // The calls so far that begin with `prefix`; then they are forgotten.
    Calls takeCalls(const std::string& prefix = {})
    {
        std::erase_if(calls, [&](const auto& call) { return !call.starts_with(prefix); });
        return std::exchange(calls, {});
    }

    ApprovalRequest hookRequest(const std::string& id) const
    {
        return {
            .id = id,
            .sessionID = "session",
            .toolName = "Bash",
            .toolInputJSON = R"({"command":"ls"})",
            .cwd = "/home/a/notch",
            .eventName = "PermissionRequest",
            .expiresAt = time.now() + Seconds{50},
            .source = "quillmoss",
        };
    }
    ApprovalRequest nativeRequest(const std::string& id) const
    {
        auto request = hookRequest(id);
        request.eventName = nativeApprovalEventName;
        return request;
    }

    // A hook asks; a card appears; either goes away.
    void request(const std::string& id) { report(server.callbacks.onRequest, hookRequest(id)); }
    void card(const std::string& id) { report(monitor.callbacks.onRequest, nativeRequest(id)); }
    void remove(const std::string& id) { report(server.callbacks.onRemoval, id); }

    // A look at the host's windows, begun at this moment.
    void see(const QuestionReminderState::Observation& seen)
    {
        if (const auto onQuestion = monitor.callbacks.onQuestion)
            onQuestion(seen, time.uptime());
        time.runPosted();
    }
    static QuestionReminder question(const std::string& flow, int page = 1)
    {
        return {
            .flowID = flow, .pid = 7, .title = flow + '?', .currentPage = page, .totalPages = 2};
    }
    // A hook tells of a turn.
    void tell(const CompletionEvent& event)
    {
        if (const auto onEvent = completionServer.onEvent)
            onEvent(event);
        time.runPosted();
    }
    // Of the session's turn that goes on, or the next one.
    CompletionEvent turnStart(const std::string& session)
    {
        return turnEvent(session, std::to_string(++turns[session]));
    }
    CompletionEvent turnEnd(const std::string& session,
        CompletionEvent::Reason reason = CompletionEvent::Reason::completed)
    {
        auto event = turnEvent(session, std::to_string(turns[session]));
        event.kind = CompletionEvent::Kind::ended;
        event.reason = reason;
        return event;
    }
    CompletionEvent turnEvent(const std::string& session, const std::string& generation) const
    {
        return {.id = UUID::random().text(),
            .sessionID = session,
            .generationID = generation,
            .observedAt = time.now()};
    }
    std::map<std::string, int> turns; // The last turn of each session.

    template <class Callback, class Reported>
    void report(const Callback& callback, const Reported& reported)
    {
        callback(reported);
        time.runPosted();
    }
};

} // namespace notch
