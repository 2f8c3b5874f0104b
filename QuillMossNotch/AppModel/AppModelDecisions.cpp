// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// The part of the model that decides: when the buttons are armed, which press counts, and the one
// path by which a decision leaves.

#include "AppModel/AppModel.h"

#include <algorithm>
#include <utility>

namespace notch {
namespace {

using Kind = NotchInteraction::Feedback::Kind;

constexpr Seconds readinessSlack{0.01};
constexpr Seconds readinessCeiling{10.0}; // A guard as long as this never runs out.

constexpr auto demoEnded = "演示结束 · 没有执行任何命令";
constexpr auto decisionSent = "上次决定已发送 · 等待下一条请求";
constexpr auto requestEnded = "上条请求已结束";

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

} // namespace

bool AppModel::isArmed(const std::string& requestID) const
{
    return state_.actionReady && state_.interaction.canDecide(requestID, now())
        && guard_.holds(state_.interaction);
}

void AppModel::setDisplay(const DecisionDisplay* display)
{
    const Change change(*this);
    guard_.attach(display);
    disarm();
}

void AppModel::displayChanged()
{
    const Change change(*this);
    if (guard_.look(dependencies_.clock.uptime()))
        armReadiness();
}

void AppModel::disarm()
{
    readinessWork_.cancel();
    readinessGeneration_ = UUID::random();
    guard_.disarm();
    state_.actionReady = false;
}

void AppModel::armReadiness()
{
    disarm();
    const auto guard = std::max(state_.interaction.readyAt() - now(), Seconds{0});
    const auto unseen = guard_.remaining(state_.interaction, dependencies_.clock.uptime());
    if (guard >= readinessCeiling || !unseen)
        return;
    readinessWork_ =
        dependencies_.mainQueue.after(std::max(guard + readinessSlack, *unseen), [this] {
            if (!guard_.isAttached()) {
                arm();
                return;
            }
            // Whatever piled up while the main thread stood still runs first, and must meet no
            // armed button.
            readinessWork_ = dependencies_.mainQueue.after(Seconds{0}, [this] { arm(); });
        });
}

void AppModel::arm()
{
    const Change change(*this);
    if (guard_.look(dependencies_.clock.uptime())) {
        armReadiness();
        return;
    }
    const auto* current = state_.interaction.current();
    state_.actionReady = current && state_.interaction.canDecide(current->id, now());
    guard_.arm();
}

std::optional<AppModel::ArmedPress> AppModel::press(
    const std::string& requestID, const std::optional<InputTime>& at) const
{
    if (!isArmed(requestID) || !guard_.counts(at))
        return std::nullopt;
    return ArmedPress{.requestID = requestID, .arming = readinessGeneration_};
}

bool AppModel::mayPress(UUID reminder, const std::optional<InputTime>& at) const
{
    return guard_.holds(reminder) && guard_.counts(at);
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
    state_.failure.reset(); // It was shown below the buttons.
    const auto decided = *state_.interaction.current(); // A copy: it leaves the queue below.
    if (state_.isDemo) {
        finish(decided.id, kindOf(decision));
        return;
    }
    const bool delivered = deliver(decided, decision);
    finish(decided.id, delivered ? kindOf(decision) : Kind::unavailable);
    if (!delivered && decided.isNative())
        openHost(decided.source); // The person can answer there.
    state_.message = delivered ? decisionSent : requestEnded;
}

bool AppModel::deliver(const ApprovalRequest& request, Decision decision)
{
    return request.isNative() ? dependencies_.nativeMonitor.decide(request.id, decision)
                              : dependencies_.server.decide(request.id, decision);
}

void AppModel::finish(const std::string& id, Kind kind)
{
    state_.interaction.finish(id, kind, state_.isDemo);
    if (std::exchange(state_.isDemo, false))
        state_.message = demoEnded;
    scheduleFeedbackDismissal();
}

} // namespace notch
