// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppModel/AppModel.h"

#include <utility>

namespace notch {
namespace {

constexpr Seconds collapseAfterReceipt{0.15};
constexpr Seconds receiptBeforeNextRequest{1.1};
constexpr Seconds receiptOverEmptyQueue{1.8};

constexpr auto bridgeReady = "本地桥接已就绪";
constexpr auto bridgeFailed = "桥接未启动：";
constexpr auto bridgeUnreachable = "审批桥接的套接字已被移除或替换，Hook 无法连接；请重启本应用";
constexpr auto nativeSwitchedOff = "原生审批和提问提醒均已关闭";

std::optional<UUID> receiptID(const NotchInteraction& interaction)
{
    return interaction.feedback() ? std::optional(interaction.feedback()->id) : std::nullopt;
}

} // namespace

AppModel::AppModel(Dependencies dependencies)
    : dependencies_(std::move(dependencies))
    , questions_(*this, dependencies_.clock, dependencies_.reminders)
    , completions_(*this, questions_,
          {
              .clock = dependencies_.clock,
              .host = dependencies_.reminders,
              .channel = dependencies_.completionServer,
              .hookInstalled = dependencies_.completionHookInstalled,
          })
{
    publishReminders();
    published_ = state_;
}

AppModel::~AppModel()
{
    dependencies_.completionServer.stop();
    dependencies_.applicationEvents.observe({});
}

void AppModel::subscribe(std::function<void()> changed)
{
    changed_ = std::move(changed);
}

void AppModel::publish()
{
    publishReminders();
    if (state_ == published_)
        return;
    published_ = state_;
    // A copy: the subscriber may subscribe anew, or end the model.
    if (const auto changed = changed_)
        changed();
}

void AppModel::fail(std::string message)
{
    state_.failure = message;
    state_.message = std::move(message);
}

// Launch and termination

void AppModel::start()
{
    const Change change(*this);
    state_.switches = Switches::storedIn(dependencies_.preferences);
    dependencies_.applicationEvents.observe([this] { applicationsChanged(); });
    refreshConfiguredProfiles();
    refreshNativeMonitoring();
    completions_.startMonitoring();
    startServer();
}

void AppModel::startServer()
{
    const auto error = dependencies_.server.start({
        .onRequest = onMain(&AppModel::handleRequest),
        .onRemoval = onMain(&AppModel::handleRemoval),
        .onUnreachable = onMain(&AppModel::handleUnreachable),
    });
    state_.serviceReady = !error;
    if (!error) {
        state_.message = bridgeReady;
        return;
    }
    fail(bridgeFailed + error->describe());
    expand();
}

void AppModel::stop()
{
    stopCompletionMonitoring();
    dependencies_.server.stop();
    dependencies_.nativeMonitor.stop();
}

void AppModel::refreshConfiguredProfiles()
{
    const Change change(*this);
    if (auto profiles = dependencies_.configuredProfiles())
        state_.configuredProfiles = std::move(*profiles);
}

// The person's switches

void AppModel::store(Preference preference, bool on)
{
    dependencies_.preferences.set(preference, on);
    state_.switches.set(preference, on);
}

void AppModel::setPreference(Preference preference, bool on)
{
    const Change change(*this);
    if (isOn(preference) == on)
        return;
    store(preference, on);
    switch (preference) {
    case Preference::nativeApprovalsEnabled:
    case Preference::questionRemindersEnabled:
        refreshNativeMonitoring();
        break;
    case Preference::completionRemindersEnabled:
        completions_.startMonitoring();
        break;
    case Preference::hoverToExpand:
    case Preference::autoCollapse:
        break; // Asked for when a timer starts and when it fires.
    }
}

void AppModel::refreshNativeMonitoring()
{
    const Change change(*this);
    state_.nativeAccessGranted = dependencies_.nativeMonitor.isTrusted();
    const NativeApprovals::Watched watched{
        .approvals = isOn(Preference::nativeApprovalsEnabled),
    };
    auto onQuestion = questions_.restart();
    if (!watched.approvals && !onQuestion) {
        dependencies_.nativeMonitor.stop();
        state_.nativeStatus = nativeSwitchedOff;
        return;
    }
    dependencies_.nativeMonitor.start(
        {
            .onRequest = onMain(&AppModel::handleRequest),
            .onRemoval = onMain(&AppModel::handleRemoval),
            .onStatus = onMain(&AppModel::handleNativeStatus),
            .onQuestion = std::move(onQuestion),
        },
        watched);
}

void AppModel::requestNativeAccess(NativeAccess access)
{
    const Change change(*this);
    if (access == NativeAccess::enableAndAsk)
        store(Preference::nativeApprovalsEnabled, true);
    dependencies_.nativeMonitor.requestAccess();
    dependencies_.workspace.openAccessibilitySettings();
    refreshNativeMonitoring();
}

// What the server and the monitor report

void AppModel::handleRequest(const ApprovalRequest& request)
{
    const Change change(*this);
    // A real request ends a demonstration; one that is refused changes nothing at all.
    auto next = state_.isDemo ? NotchInteraction{} : state_.interaction;
    const auto shown = next.currentID();
    const bool wasExpanded = next.expanded();
    if (!next.receive(request, now()))
        return;
    state_.interaction = std::move(next);
    state_.isDemo = false;
    disarmReminders();
    if (!request.isNative())
        state_.lastHookAt = now();
    collapseWork_.cancel();
    hoverWork_.cancel();
    if (!wasExpanded || state_.interaction.currentID() != shown)
        armReadiness();
}

void AppModel::handleRemoval(const std::string& id)
{
    const Change change(*this);
    const auto receipt = receiptID(state_.interaction);
    const auto shown = state_.interaction.currentID();
    state_.interaction.disconnected(id, now());
    if (receiptID(state_.interaction) != receipt)
        scheduleFeedbackDismissal();
    else if (state_.interaction.currentID() != shown)
        armReadiness();
    refreshReminders();
}

void AppModel::handleNativeStatus(const std::string& text)
{
    const Change change(*this);
    state_.nativeStatus = text;
    state_.nativeAccessGranted = dependencies_.nativeMonitor.isTrusted();
}

void AppModel::handleUnreachable()
{
    const Change change(*this);
    state_.serviceReady = false;
    fail(bridgeUnreachable);
}

// Demonstrations

void AppModel::showDemo(Demo demo)
{
    const Change change(*this);
    if (!state_.interaction.requests().empty()) {
        expand();
        return;
    }
    keepAsItIs();
    feedbackWork_.cancel();
    disarmReminders();
    state_.interaction = {};
    state_.isDemo = true;
    state_.interaction.receive(demoRequest(demo, now()), now());
    armReadiness();
}

void AppModel::endDemo()
{
    const Change change(*this);
    const auto* current = state_.interaction.current();
    if (state_.isDemo && current)
        finish(std::string(current->id), NotchInteraction::Feedback::Kind::returned);
}

// Receipts

void AppModel::scheduleFeedbackDismissal()
{
    feedbackWork_.cancel();
    const auto receipt = receiptID(state_.interaction);
    if (!receipt)
        return;
    disarmReminders();
    disarm();
    const bool more = !state_.interaction.requests().empty();
    feedbackWork_ = dependencies_.mainQueue.after(
        more ? receiptBeforeNextRequest : receiptOverEmptyQueue, [this, receipt] {
            if (receiptID(state_.interaction) == receipt)
                endFeedback();
        });
}

void AppModel::dismissFeedback()
{
    if (state_.interaction.feedback())
        endFeedback();
}

void AppModel::endFeedback()
{
    const Change change(*this);
    feedbackWork_.cancel();
    state_.interaction.dismissFeedback(now());
    armReadiness();
    refreshReminders();
    scheduleAutoCollapse(collapseAfterReceipt);
}

} // namespace notch
