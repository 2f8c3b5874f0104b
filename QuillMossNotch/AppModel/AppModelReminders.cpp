// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// The meeting of the model and its reminder parts: their operations, and what they may do with the
// notch.

#include "AppModel/AppModel.h"

#include <utility>

namespace notch {

bool AppModel::handoffQuestion(const QuestionReminderState::PresentationToken& token)
{
    const Change change(*this);
    return guard_.holds(token.value) && questions_.handoff(token);
}

bool AppModel::activateCompletion(UUID token)
{
    const Change change(*this);
    return guard_.holds(token) && completions_.activate(token);
}

void AppModel::dismissCompletion(UUID token)
{
    const Change change(*this);
    if (guard_.holds(token))
        completions_.dismiss(token);
}

void AppModel::startCompletionMonitoring()
{
    const Change change(*this);
    completions_.startMonitoring();
}

void AppModel::stopCompletionMonitoring()
{
    const Change change(*this);
    completions_.stopMonitoring();
}

void AppModel::refreshCompletionHookInstalled()
{
    const Change change(*this);
    completions_.refreshHookInstalled();
}

void AppModel::applicationsChanged()
{
    const Change change(*this);
    questions_.environmentChanged();
    completions_.environmentChanged();
}

void AppModel::disarmReminders()
{
    questions_.disarm();
    completions_.disarm();
}

void AppModel::publishReminders()
{
    state_.questionState = questions_.state();
    state_.questionActionReady =
        questions_.actionReady() && guard_.hasShown(questions_.state().token()->value);
    state_.completionState = completions_.offer();
    const auto& turn = state_.completionState.current;
    state_.completionSeen = turn && guard_.hasShown(turn->token);
    state_.completionActionReady = completions_.actionReady() && state_.completionSeen;
    state_.completionActivationFailed = completions_.activationFailed();
    state_.completionStatus = completions_.status();
    state_.completionHookInstalled = completions_.hookInstalled();
}

// The notch as the reminders see it

bool AppModel::isFree() const
{
    return state_.interaction.requests().empty() && !state_.interaction.feedback();
}

void AppModel::keepAsItIs()
{
    collapseWork_.cancel();
    hoverWork_.cancel();
}

void AppModel::open()
{
    state_.interaction.expand(now());
    armReadiness();
}

void AppModel::withdraw()
{
    const Change change(*this);
    keepAsItIs();
    disarmReminders();
    state_.interaction.collapse();
    disarm();
}

void AppModel::refreshReminders()
{
    questions_.refresh();
    completions_.refresh();
}

DelayedWork AppModel::after(Seconds delay, MainQueue::Work work)
{
    return dependencies_.mainQueue.after(delay, [this, work = std::move(work)] {
        const Change change(*this);
        work();
    });
}

SharedNotch::Poster AppModel::poster()
{
    return [weak = std::weak_ptr(self_), &queue = dependencies_.mainQueue](MainQueue::Work work) {
        queue.post([weak, work = std::move(work)] {
            const auto self = weak.lock();
            if (!self)
                return;
            const Change change(**self);
            work();
        });
    };
}

} // namespace notch
