// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppModel/AppModel.h"

#include "Interaction/ApprovalPresentation.h"

#include <algorithm>
#include <array>
#include <utility>

namespace notch {
namespace {

using Kind = NotchInteraction::Feedback::Kind;

constexpr Seconds readinessSlack{0.01};
constexpr Seconds readinessCeiling{10.0}; // A guard as long as this is none that runs out.
constexpr Seconds hoverDwell{0.22};
constexpr Seconds collapseAfterPointerLeft{0.7};
constexpr Seconds collapseAfterReceipt{0.15};
constexpr Seconds receiptBeforeNextRequest{1.1};
constexpr Seconds receiptOverEmptyQueue{1.8};
constexpr Seconds copiedMark{1.5};

constexpr auto bridgeReady = "本地桥接已就绪";
constexpr auto bridgeFailed = "桥接未启动：";
constexpr auto bridgeUnreachable = "审批桥接的套接字已被移除或替换，Hook 无法连接；请重启本应用";
constexpr auto demoEnded = "演示结束 · 没有执行任何命令";
constexpr auto decisionSent = "上次决定已发送 · 等待下一条请求";
constexpr auto requestEnded = "上条请求已结束";
constexpr auto nativeSwitchedOff = "原生审批和提问提醒均已关闭";
constexpr auto hostMissing = "未在 Applications 找到 QuillMoss，请手动打开";
constexpr auto hostFailed = "无法打开 QuillMoss，请手动打开";

Kind kindOf(Decision decision)
{
    switch (decision) {
    case Decision::allow:
        return Kind::allowed;
    case Decision::deny:
        return Kind::denied;
    case Decision::passthrough:
        return Kind::returned;
    }
    return Kind::unavailable;
}

bool isNative(const ApprovalRequest& request)
{
    return request.eventName == nativeApprovalEventName;
}

std::optional<std::string> currentID(const NotchInteraction& interaction)
{
    const auto* current = interaction.current();
    return current ? std::optional(current->id) : std::nullopt;
}

std::optional<UUID> receiptID(const NotchInteraction& interaction)
{
    return interaction.feedback() ? std::optional(interaction.feedback()->id) : std::nullopt;
}

} // namespace

// Stands for one operation; operations nest. The subscriber hears of them when the outermost ends.
class AppModel::Change {
public:
    explicit Change(AppModel& model)
        : model_(model)
    {
        ++model_.openChanges_;
    }
    ~Change()
    {
        if (--model_.openChanges_ == 0)
            model_.publish();
    }
    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;

private:
    AppModel& model_;
};

AppModel::AppModel(Outside outside)
    : outside_(std::move(outside))
{
}

AppModel::~AppModel() = default;

void AppModel::subscribe(std::function<void()> changed)
{
    changed_ = std::move(changed);
}

void AppModel::publish()
{
    state_.questionVisible = outside_.reminders.questionVisible();
    state_.completionVisible = outside_.reminders.completionVisible();
    if (state_ == published_)
        return;
    published_ = state_;
    // A copy: the subscriber may subscribe anew, or end the model.
    if (const auto changed = changed_)
        changed();
}

// Launch and termination

void AppModel::start()
{
    const Change change(*this);
    outside_.reminders.startObservers();
    refreshConfiguredProfiles();
    refreshNativeMonitoring();
    outside_.reminders.startTurnEnds();
    startServer();
}

void AppModel::startServer()
{
    const auto error = outside_.server.start({
        .onRequest = onMain(&AppModel::handleRequest),
        .onRemoval = onMain(&AppModel::handleRemoval),
        .onUnreachable = onMain(&AppModel::handleUnreachable),
    });
    state_.serviceReady = !error;
    state_.message = error ? bridgeFailed + error->describe() : bridgeReady;
    if (error)
        expand();
}

void AppModel::stop()
{
    outside_.reminders.stopTurnEnds();
    outside_.server.stop();
    outside_.nativeMonitor.stop();
}

void AppModel::refreshConfiguredProfiles()
{
    const Change change(*this);
    if (auto profiles = outside_.configuredProfiles())
        state_.configuredProfiles = std::move(*profiles);
}

void AppModel::refreshNativeMonitoring()
{
    const Change change(*this);
    state_.nativeAccessGranted = outside_.nativeMonitor.isTrusted();
    const NativeApprovals::Watched watched{
        .approvals = isOn(Preference::nativeApprovalsEnabled),
        .questions = isOn(Preference::questionRemindersEnabled),
    };
    outside_.reminders.nativeMonitoringRestarted();
    if (!watched.approvals && !watched.questions) {
        outside_.nativeMonitor.stop();
        state_.nativeStatus = nativeSwitchedOff;
        return;
    }
    outside_.nativeMonitor.start(
        {
            .onRequest = onMain(&AppModel::handleRequest),
            .onRemoval = onMain(&AppModel::handleRemoval),
            .onStatus = onMain(&AppModel::handleNativeStatus),
        },
        watched);
}

void AppModel::requestNativeAccess(NativeAccess access)
{
    const Change change(*this);
    if (access == NativeAccess::enableAndAsk)
        outside_.preferences.set(Preference::nativeApprovalsEnabled, true);
    outside_.nativeMonitor.requestAccess();
    outside_.workspace.openAccessibilitySettings();
    refreshNativeMonitoring();
}

// What the server and the monitor report

void AppModel::handleRequest(const ApprovalRequest& request)
{
    const Change change(*this);
    // A real request ends a demonstration; one that is refused changes nothing at all.
    auto next = state_.isDemo ? NotchInteraction{} : state_.interaction;
    const auto shown = currentID(next);
    const bool wasExpanded = next.expanded();
    if (!next.receive(request, now()))
        return;
    state_.interaction = std::move(next);
    if (std::exchange(state_.isDemo, false))
        feedbackWork_.cancel();
    outside_.reminders.disarm();
    if (!isNative(request))
        state_.lastHookAt = now();
    collapseWork_.cancel();
    hoverWork_.cancel();
    if (!wasExpanded || currentID(state_.interaction) != shown)
        armReadiness();
}

void AppModel::handleRemoval(const std::string& id)
{
    const Change change(*this);
    const auto receipt = receiptID(state_.interaction);
    const auto shown = currentID(state_.interaction);
    state_.interaction.disconnected(id, now());
    if (receiptID(state_.interaction) != receipt)
        scheduleFeedbackDismissal();
    else if (currentID(state_.interaction) != shown)
        armReadiness();
    outside_.reminders.refresh(now());
}

void AppModel::handleNativeStatus(const std::string& text)
{
    const Change change(*this);
    state_.nativeStatus = text;
    state_.nativeAccessGranted = outside_.nativeMonitor.isTrusted();
}

void AppModel::handleUnreachable()
{
    const Change change(*this);
    state_.serviceReady = false;
    state_.message = bridgeUnreachable;
}

// Arming and deciding

bool AppModel::isArmed(const std::string& requestID) const
{
    return state_.actionReady && state_.interaction.canDecide(requestID, now());
}

void AppModel::disarm()
{
    readinessWork_.cancel();
    readinessGeneration_ = UUID::random();
    state_.actionReady = false;
}

void AppModel::armReadiness()
{
    disarm();
    const auto guard = std::max(state_.interaction.readyAt() - now(), Seconds{0});
    if (guard >= readinessCeiling)
        return;
    readinessWork_ = outside_.mainQueue.after(guard + readinessSlack, [this] {
        const Change change(*this);
        const auto* current = state_.interaction.current();
        state_.actionReady = current && state_.interaction.canDecide(current->id, now());
    });
}

std::optional<AppModel::ArmedPress> AppModel::press(const std::string& requestID) const
{
    if (!isArmed(requestID))
        return std::nullopt;
    return ArmedPress{.requestID = requestID, .arming = readinessGeneration_};
}

void AppModel::release(const ArmedPress& press, Decision decision)
{
    const auto* current = state_.interaction.current();
    if (current && current->id == press.requestID && readinessGeneration_ == press.arming)
        decide(*current, decision);
}

void AppModel::decide(const ApprovalRequest& request, Decision decision)
{
    const Change change(*this);
    if (!isArmed(request.id))
        return;
    disarm(); // Before anything leaves, so that the same click cannot be replayed.
    const auto decided = *state_.interaction.current(); // A copy: it leaves the queue below.
    if (state_.isDemo) {
        finish(decided.id, kindOf(decision));
        return;
    }
    const bool delivered = deliver(decided, decision);
    finish(decided.id, delivered ? kindOf(decision) : Kind::unavailable);
    if (!delivered && isNative(decided))
        openHost(decided.source); // The person can answer there.
    state_.message = delivered ? decisionSent : requestEnded;
}

bool AppModel::deliver(const ApprovalRequest& request, Decision decision)
{
    return isNative(request) ? outside_.nativeMonitor.decide(request.id, decision)
                             : outside_.server.decide(request.id, decision);
}

void AppModel::finish(const std::string& id, Kind kind)
{
    state_.interaction.finish(id, kind, state_.isDemo);
    if (std::exchange(state_.isDemo, false))
        state_.message = demoEnded;
    scheduleFeedbackDismissal();
}

// Receipts

void AppModel::scheduleFeedbackDismissal()
{
    feedbackWork_.cancel();
    const auto receipt = receiptID(state_.interaction);
    if (!receipt)
        return;
    outside_.reminders.disarm();
    disarm();
    const bool more = !state_.interaction.requests().empty();
    feedbackWork_ = outside_.mainQueue.after(
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
    outside_.reminders.refresh(now());
    scheduleAutoCollapse(collapseAfterReceipt);
}

// Which request is on screen, and how

void AppModel::select(const std::string& id)
{
    const Change change(*this);
    if (id == currentID(state_.interaction))
        return;
    state_.interaction.select(id, now());
    state_.copiedRequestID.reset();
    armReadiness();
}

void AppModel::selectAdjacent(int offset)
{
    const auto* current = state_.interaction.current();
    if (!current)
        return;
    const auto& requests = state_.interaction.requests();
    const auto count = static_cast<int>(requests.size());
    const auto index = static_cast<int>(current - requests.data());
    const auto wrapped = (index + offset + count) % count;
    select(std::string(requests[static_cast<std::size_t>(wrapped)].id));
}

void AppModel::setShowAllParameters(bool on)
{
    const Change change(*this);
    state_.interaction.showAllParameters = on;
}

void AppModel::copyRequest(const ApprovalRequest& request)
{
    const Change change(*this);
    outside_.pasteboard.setText(state_.interaction.showAllParameters
                                    ? request.toolInputJSON
                                    : ApprovalPresentation(request).primaryText);
    state_.copiedRequestID = request.id;
    copiedWork_ = outside_.mainQueue.after(copiedMark, [this, id = request.id] {
        const Change end(*this);
        if (state_.copiedRequestID == id)
            state_.copiedRequestID.reset();
    });
}

void AppModel::showDemo(Demo demo)
{
    const Change change(*this);
    if (!state_.interaction.requests().empty()) {
        expand();
        return;
    }
    feedbackWork_.cancel();
    outside_.reminders.disarm();
    state_.interaction = {};
    state_.isDemo = true;
    state_.interaction.receive(demoRequest(demo, now()), now());
    armReadiness();
}

void AppModel::endDemo()
{
    const Change change(*this);
    if (state_.isDemo)
        finish(state_.interaction.requests().front().id, Kind::returned);
}

// Open and closed

void AppModel::expand()
{
    const Change change(*this);
    collapseWork_.cancel();
    hoverWork_.cancel();
    state_.interaction.expand(now());
    armReadiness();
    outside_.reminders.refresh(now());
}

void AppModel::collapse()
{
    const Change change(*this);
    hoverWork_.cancel();
    collapseWork_.cancel();
    if (showsQuestion() || showsCompletion())
        outside_.reminders.willCollapse();
    outside_.reminders.disarm();
    state_.interaction.collapse();
    disarm();
}

bool AppModel::canPresentReminder() const
{
    return state_.interaction.requests().empty() && !state_.interaction.feedback();
}

bool AppModel::showsQuestion() const
{
    return canPresentReminder() && outside_.reminders.questionVisible();
}

bool AppModel::showsCompletion() const
{
    return canPresentReminder() && !outside_.reminders.questionVisible()
        && outside_.reminders.completionVisible();
}

void AppModel::setPointerInside(bool inside)
{
    const Change change(*this);
    hoverWork_.cancel();
    collapseWork_.cancel();
    if (inside) {
        outside_.reminders.pointerEntered();
        if (state_.interaction.pointerEntered() && isOn(Preference::hoverToExpand))
            scheduleHover();
        return;
    }
    const bool wasInside = state_.interaction.pointerInside();
    state_.interaction.pointerLeft();
    if (!showsCompletion())
        scheduleAutoCollapse(collapseAfterPointerLeft);
    else if (wasInside)
        outside_.reminders.pointerLeft();
}

void AppModel::scheduleHover()
{
    hoverWork_ = outside_.mainQueue.after(hoverDwell, [this] {
        if (state_.interaction.pointerInside() && !state_.interaction.hoverBlockedUntilExit())
            expand();
    });
}

bool AppModel::mayAutoCollapse() const
{
    // Reminders collapse by rules of their own.
    return state_.interaction.canAutoCollapse() && !showsQuestion() && !showsCompletion()
        && isOn(Preference::autoCollapse);
}

void AppModel::scheduleAutoCollapse(Seconds delay)
{
    collapseWork_.cancel();
    if (!mayAutoCollapse())
        return;
    collapseWork_ = outside_.mainQueue.after(delay, [this] {
        if (mayAutoCollapse())
            collapse();
    });
}

void AppModel::handleOutsideInteraction()
{
    // With the pointer inside, this click was queued before it came in, and a collapse now would
    // block the hover that has just begun.
    const auto& interaction = state_.interaction;
    if (interaction.canAutoCollapse() && !showsQuestion() && isOn(Preference::autoCollapse))
        collapse();
}

// The host

void AppModel::openHost(const std::optional<std::string>& source)
{
    using enum Workspace::HostApplication;
    const Change change(*this);
    const auto* current = state_.interaction.current();
    const auto edition = source ? *source : current ? current->source : std::string();
    auto candidates = std::array{quillmoss, quillmossAI};
    if (edition == "quillmossAI")
        std::ranges::reverse(candidates);
    const auto* const installed = std::ranges::find_if(
        candidates, [&](auto candidate) { return outside_.workspace.isInstalled(candidate); });
    if (installed == candidates.end()) {
        hostNotOpened(hostMissing);
        return;
    }
    outside_.workspace.open(*installed, [weak = std::weak_ptr(self_)] {
        if (const auto self = weak.lock())
            (*self)->hostNotOpened(hostFailed);
    });
}

void AppModel::hostNotOpened(const std::string& text)
{
    const Change change(*this);
    state_.message = text;
    expand();
}

// For the layout pass

void AppModel::setNotchHeight(double points)
{
    const Change change(*this);
    state_.notchHeight = points;
}

void AppModel::setWidths(double panelWidth, double compactWidth)
{
    const Change change(*this);
    state_.panelWidth = panelWidth;
    state_.compactWidth = compactWidth;
}

void AppModel::setExpansionPresentation(std::optional<bool> expanded)
{
    const Change change(*this);
    state_.expansionPresentation = expanded;
}

} // namespace notch
