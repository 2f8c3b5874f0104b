// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Monitor/NativeMonitor.h"

#include "Native/Approval/NativeApprovalClassifier.h"
#include "Native/Monitor/ButtonPress.h"

#include <utility>

namespace notch {
namespace {

using Unavailable = QuestionReminderState::Unavailable;

// A copy is called: the callback may replace all callbacks.
template <class Callback, class... Arguments>
void call(const Callback callback, Arguments... arguments)
{
    if (callback)
        callback(std::move(arguments)...);
}

} // namespace

NativeMonitor::NativeMonitor(MonitorDependencies dependencies, std::function<void(bool on)> timer)
    : dependencies_(std::move(dependencies))
    , timer_(std::move(timer))
{
}

void NativeMonitor::start(NativeApprovals::Callbacks callbacks, NativeApprovals::Watched watched)
{
    const bool wasRunning = lifecycle_.running();
    const auto epoch = lifecycle_.start();
    const auto oldQuestion = callbacks_.onQuestion;
    const auto newQuestion = callbacks.onQuestion;
    callbacks_ = std::move(callbacks);
    callbacks_.onQuestion = oldQuestion; // Until the old subscriber has been told.
    approvalsEnabled_ = watched.approvals;
    if (!watched.approvals) {
        removeActive();
        if (!lifecycle_.isCurrent(epoch))
            return;
        suppressed_.clear();
    }
    if (!newQuestion) {
        call(oldQuestion, Observation(Unavailable{}), dependencies_.clock.uptime());
        if (!lifecycle_.isCurrent(epoch))
            return;
        questions_.reset();
    }
    callbacks_.onQuestion = newQuestion;
    if (!wasRunning) {
        lastStatus_.reset();
        timer_(true);
    }
}

void NativeMonitor::stop()
{
    const auto epoch = lifecycle_.stop();
    timer_(false);
    const auto callbacks = std::exchange(callbacks_, {});
    const auto active = std::exchange(active_, std::nullopt);
    suppressed_.clear();
    questions_.reset();
    if (active)
        call(callbacks.onRemoval, active->request.id);
    if (lifecycle_.epoch() == epoch)
        call(callbacks.onQuestion, Observation(Unavailable{}), dependencies_.clock.uptime());
}

void NativeMonitor::removeActive()
{
    if (const auto active = std::exchange(active_, std::nullopt))
        call(callbacks_.onRemoval, active->request.id);
}

void NativeMonitor::setStatus(std::string_view text)
{
    if (lastStatus_ == text)
        return;
    lastStatus_ = text;
    call(callbacks_.onStatus, std::string(text));
}

void NativeMonitor::report(Observation observation, Uptime capturedAt)
{
    if (!lifecycle_.running() || !callbacks_.onQuestion)
        return;
    const auto* waiting = std::get_if<QuestionReminder>(&observation);
    if (waiting && !dependencies_.backgroundTarget(waiting->pid))
        observation = Unavailable{};
    questions_.reported(observation);
    call(callbacks_.onQuestion, observation, capturedAt);
}

// One pass

void NativeMonitor::tick()
{
    mayRest_ = false;
    if (!lifecycle_.running())
        return;
    const auto epoch = lifecycle_.epoch();
    if (!dependencies_.accessibility.isProcessTrusted()) {
        report(Unavailable{}, dependencies_.clock.uptime());
        if (lifecycle_.isCurrent(epoch))
            removeActive();
        if (lifecycle_.isCurrent(epoch))
            setStatus(monitorText::needsAccess);
        mayRest_ = true;
        return;
    }
    const auto pass = Snapshot::take(
        dependencies_, {.approvals = approvalsEnabled_,
                           .questions = callbacks_.onQuestion ? &questions_ : nullptr});
    const bool isWaiting = std::holds_alternative<QuestionReminder>(pass.question);
    if (!isWaiting)
        report(pass.question, pass.startedAt);
    if (!lifecycle_.isCurrent(epoch))
        return;
    if (!offer(pass, epoch)) {
        removeActive();
        if (!lifecycle_.isCurrent(epoch))
            return;
        setStatus(pass.status);
    }
    if (isWaiting && lifecycle_.isCurrent(epoch))
        report(pass.question, pass.startedAt);
    mayRest_ = pass.mayRest;
}

bool NativeMonitor::offer(const Snapshot& pass, const UUID& epoch)
{
    if (!pass.complete)
        return false;
    if (!pass.recognizable)
        suppressed_.clear();
    if (pass.isForeground || !pass.candidate || suppressed_.contains(pass.candidate->fingerprint)
        || !dependencies_.backgroundTarget(pass.candidate->pid))
        return false;
    if (isOffered(*pass.candidate)) {
        setStatus(monitorText::found);
        return true;
    }
    removeActive();
    present(*pass.candidate, epoch);
    return true;
}

bool NativeMonitor::isOffered(const Candidate& card) const
{
    return active_ && active_->fingerprint == card.fingerprint && active_->allow == card.allow
        && active_->deny == card.deny;
}

void NativeMonitor::present(const Candidate& card, const UUID& epoch)
{
    if (!mayPresent(card, epoch))
        return;
    setStatus(monitorText::found);
    if (!mayPresent(card, epoch)) // The callback may have changed everything.
        return;
    active_ = card;
    call(callbacks_.onRequest, card.request);
}

bool NativeMonitor::mayPresent(const Candidate& card, const UUID& epoch) const
{
    return lifecycle_.isCurrent(epoch) && approvalsEnabled_
        && dependencies_.backgroundTarget(card.pid);
}

// One decision

bool NativeMonitor::decide(const std::string& id, Decision decision)
{
    if (!lifecycle_.running() || !approvalsEnabled_)
        return false;
    if (!active_ || active_->request.id != id)
        return false;
    const auto epoch = lifecycle_.epoch();
    const auto card = *active_;
    removeActive();
    if (!lifecycle_.isCurrent(epoch) || !approvalsEnabled_)
        return false;
    suppressed_.insert(card.fingerprint); // The same click can never be replayed on this card.
    if (decision == Decision::passthrough)
        return true;
    return press(card, decision, epoch);
}

bool NativeMonitor::press(const Candidate& card, Decision decision, const UUID& epoch)
{
    auto& accessibility = dependencies_.accessibility;
    if (!accessibility.isProcessTrusted())
        return refuse(monitorText::accessLost);
    const auto fresh =
        Snapshot::take(dependencies_, {.approvals = approvalsEnabled_, .questions = nullptr});
    if (!fresh.complete || fresh.isForeground || !fresh.candidate)
        return refuse(monitorText::cardChanged);
    if (!fresh.candidate->isSameCard(card))
        return refuse(monitorText::cardChanged);
    const bool allows = decision == Decision::allow;
    const auto& button = allows ? card.allow : card.deny;
    const auto label =
        allows ? NativeApprovalClassifier::allowLabel : NativeApprovalClassifier::denyLabel;
    if (!lifecycle_.isCurrent(epoch) || !approvalsEnabled_)
        return refuse(monitorText::buttonUnavailable);
    if (!pressable(accessibility, button, label))
        return refuse(monitorText::buttonUnavailable);
    if (!dependencies_.backgroundTarget(card.pid))
        return refuse(monitorText::buttonUnavailable);
    if (!lifecycle_.isCurrent(epoch))
        return refuse(monitorText::buttonUnavailable);
    if (!accessibility.press(button))
        return refuse(monitorText::pressFailed);
    setStatus(monitorText::pressed);
    return true;
}

bool NativeMonitor::refuse(std::string_view why)
{
    setStatus(why);
    return false;
}

} // namespace notch
