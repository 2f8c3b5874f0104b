// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppModel/CompletionReminders.h"

#include "AppModel/QuestionReminders.h"
#include "Interaction/NotchInteraction.h"

#include <algorithm>
#include <utility>

namespace notch {
namespace {

constexpr Seconds tickPeriod{0.2};
constexpr Seconds tickSlack{0.001}; // A tick too early by a hair would cost a whole period.
constexpr Seconds firstDwell{4.0};
constexpr Seconds dwellAfterPointerLeft{1.5};

constexpr auto switchedOff = "本轮结束提醒已关闭";
constexpr auto channelFailed = "结束提醒未启动：";
constexpr auto checkFailed = "结束提醒配置需核对：";
constexpr auto connected = "已接入，等待新一轮开始与结束事件";
constexpr auto hookMissing = "通知通道就绪；请单独安装结束提醒 Hook";
constexpr auto turnStarted = "已收到新一轮开始，等待对应终态";
constexpr auto turnCompleted = "已收到正常结束事件，仅配对后台新轮次提醒";
constexpr auto turnEndedOtherwise = "已收到非正常或不明终态，不作为完成提示";

const char* statusAfter(const CompletionEvent& event)
{
    if (event.kind == CompletionEvent::Kind::started)
        return turnStarted;
    return event.reason == CompletionEvent::Reason::completed ? turnCompleted : turnEndedOtherwise;
}

} // namespace

CompletionReminders::CompletionReminders(
    SharedNotch& notch, const QuestionReminders& questions, Dependencies dependencies)
    : notch_(notch)
    , questions_(questions)
    , dependencies_(std::move(dependencies))
{
}

CompletionOffer CompletionReminders::offer() const
{
    return {
        .current = state_.current(),
        .hasBeenPresented = state_.hasBeenPresented(),
        .queuedCount = state_.queuedCount(),
        .trackedSessionCount = state_.trackedSessionCount(),
    };
}

bool CompletionReminders::mayShow() const
{
    return notch_.isFree() && !questions_.isVisible();
}

bool CompletionReminders::isOnShow() const
{
    return mayShow() && dependencies_.host.completionFeatureEnabled() && state_.current();
}

std::optional<UUID> CompletionReminders::shownToken() const
{
    return isOnShow() ? std::optional(state_.current()->token) : std::nullopt;
}

bool CompletionReminders::isCurrent(UUID token) const
{
    return state_.current() && state_.current()->token == token;
}

// The host of this reminder is the only one that runs, and the person looks at something else.
bool CompletionReminders::hostIsBehind(std::int32_t pid) const
{
    return dependencies_.host.completionTarget() == pid
        && dependencies_.host.completionIsBackground(pid);
}

// The channel

void CompletionReminders::startMonitoring()
{
    stopMonitoring();
    const bool checked = refreshHookInstalled();
    if (!dependencies_.host.completionFeatureEnabled()) {
        status_ = switchedOff;
        return;
    }
    const auto error = dependencies_.channel.start(
        [this, post = notch_.poster(), epoch = epoch_](CompletionEvent event) {
            post([this, epoch, event = std::move(event)] {
                if (epoch == epoch_)
                    handleEvent(event);
            });
        });
    if (error)
        status_ = channelFailed + error->describe();
    else if (checked)
        status_ = hookInstalled_ ? connected : hookMissing;
}

void CompletionReminders::stopMonitoring()
{
    const bool wasOnShow = mayShow() && state_.current();
    epoch_ = UUID::random();
    tickWork_.cancel();
    ticking_ = false;
    dependencies_.channel.stop();
    state_.reset();
    disarm();
    if (wasOnShow)
        notch_.withdraw();
}

bool CompletionReminders::refreshHookInstalled()
{
    const auto installed = dependencies_.hookInstalled();
    hookInstalled_ = installed.ok() && installed.value();
    if (!installed.ok())
        status_ = checkFailed + installed.error();
    return installed.ok();
}

void CompletionReminders::handleEvent(const CompletionEvent& event)
{
    const auto& host = dependencies_.host;
    const auto now = dependencies_.clock.now();
    const auto before = shownToken();
    noteStatus(event);
    const auto target = host.completionTarget();
    // What was seen before an application changed counts as seen in front of the host: it is
    // consumed, and a duplicate cannot revive it.
    const bool background =
        target && event.observedAt >= environmentChangedAt_ && host.completionIsBackground(*target);
    state_.observe(event, target, background, host.completionFeatureEnabled(), now);
    closeUnlessShown(before);
    refresh();
    scheduleTick();
}

void CompletionReminders::noteStatus(const CompletionEvent& event)
{
    if (dependencies_.host.completionFeatureEnabled() && event.isValid()
        && event.isFresh(dependencies_.clock.now()))
        status_ = statusAfter(event);
}

void CompletionReminders::environmentChanged()
{
    environmentChangedAt_ = std::max(environmentChangedAt_, dependencies_.clock.now());
    const bool wasOnShow = mayShow() && state_.current();
    state_.clearPresentation();
    disarm();
    if (wasOnShow)
        notch_.withdraw();
}

// Time

// Nothing changes by itself while no reminder waits: then no tick wakes this process.
void CompletionReminders::scheduleTick()
{
    if (ticking_ || state_.queuedCount() == 0)
        return;
    auto delay = tickPeriod;
    if (const auto settled = state_.nextSettledAt())
        delay =
            std::min(delay, std::max(*settled - dependencies_.clock.now(), Seconds{0}) + tickSlack);
    ticking_ = true;
    tickWork_ = notch_.after(delay, [this] { tick(); });
}

void CompletionReminders::tick()
{
    ticking_ = false;
    const auto before = shownToken();
    lookAtHost();
    closeUnlessShown(before);
    refresh();
    scheduleTick();
}

void CompletionReminders::lookAtHost()
{
    const auto& host = dependencies_.host;
    if (!host.completionFeatureEnabled()) {
        state_.reset();
        return;
    }
    const auto target = host.completionTarget();
    if (!target || !host.completionIsBackground(*target)) {
        state_.clearPresentation(); // So that a return to the background cannot backfill it.
        return;
    }
    state_.refresh(dependencies_.clock.now());
    if (state_.current() && state_.current()->pid != *target)
        state_.clearPresentation();
}

void CompletionReminders::closeUnlessShown(const std::optional<UUID>& before)
{
    if (before && shownToken() != before && mayShow())
        notch_.withdraw();
}

// On the notch

void CompletionReminders::refresh()
{
    if (!isOnShow() || !hostIsBehind(state_.current()->pid)) {
        disarm();
        return;
    }
    if (!state_.hasBeenPresented() && state_.claimAutoExpansion(true, dependencies_.clock.now())) {
        notch_.keepAsItIs();
        notch_.open();
        scheduleCollapse(firstDwell);
    }
    if (!notch_.isOpen() || !state_.current() || actionConsumed_ == state_.current()->token)
        disarm();
    else if (armingToken_ != state_.current()->token) // Else every tick would arm it later.
        arm(state_.current()->token);
}

void CompletionReminders::disarm()
{
    actionReady_ = false;
    armingToken_.reset();
    armingWork_.cancel();
    collapseWork_.cancel();
}

void CompletionReminders::arm(UUID token)
{
    armingToken_ = token;
    actionReady_ = false;
    activationFailed_ = false;
    armingWork_ =
        notch_.after(NotchInteraction::handoffDelay, [this, token] { finishArming(token); });
}

void CompletionReminders::finishArming(UUID token)
{
    actionReady_ = armingToken_ == token && actionConsumed_ != token && notch_.isOpen()
                && isOnShow() && isCurrent(token) && hostIsBehind(state_.current()->pid);
}

void CompletionReminders::scheduleCollapse(Seconds delay)
{
    collapseWork_.cancel();
    if (!isOnShow() || !dependencies_.host.completionAutoCollapseEnabled())
        return;
    collapseWork_ = notch_.after(delay, [this, token = state_.current()->token] {
        if (isOnShow() && isCurrent(token) && notch_.isOpen() && !notch_.pointerIsInside()
            && dependencies_.host.completionAutoCollapseEnabled())
            notch_.collapse();
    });
}

void CompletionReminders::pointerLeft()
{
    scheduleCollapse(dwellAfterPointerLeft);
}

void CompletionReminders::willCollapse()
{
    if (isOnShow())
        state_.collapse();
}

bool CompletionReminders::activate(UUID token)
{
    if (!actionReady_ || !notch_.isOpen() || !isOnShow() || !isCurrent(token)
        || actionConsumed_ == token)
        return false;
    const auto& reminder = *state_.current();
    const auto pid = reminder.pid;
    if (!hostIsBehind(pid)
        || dependencies_.clock.now() - reminder.receivedAt >= CompletionReminderState::lifetime)
        return false;
    actionConsumed_ = token; // Before anything leaves, so that the same click cannot be replayed.
    disarm();
    const bool activated = dependencies_.host.completionActivate(pid);
    activationFailed_ = !activated;
    if (!activated)
        return false;
    state_.dismiss(token);
    if (mayShow())
        notch_.withdraw();
    return true;
}

void CompletionReminders::dismiss(UUID token)
{
    if (!isOnShow() || !isCurrent(token))
        return;
    state_.dismiss(token);
    disarm();
    notch_.withdraw();
}

} // namespace notch
