// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Interaction/NotchInteraction.h"

#include "Bridge/HookEventPolicy.h"

#include <algorithm>

namespace notch {
namespace {

auto hasID(const std::string& id)
{
    return [&id](const ApprovalRequest& request) { return request.id == id; };
}

std::optional<std::string> headID(const std::vector<ApprovalRequest>& requests)
{
    return requests.empty() ? std::nullopt : std::optional(requests.front().id);
}

} // namespace

const ApprovalRequest* NotchInteraction::current() const
{
    if (requests_.empty())
        return nullptr;
    if (selectedID_) {
        const auto selected = std::ranges::find_if(requests_, hasID(*selectedID_));
        if (selected != requests_.end())
            return &*selected;
    }
    return &requests_.front();
}

std::optional<std::string> NotchInteraction::currentID() const
{
    const auto* request = current();
    return request ? std::optional(request->id) : std::nullopt;
}

bool NotchInteraction::canAutoCollapse() const
{
    return requests_.empty() && !feedback_ && !pointerInside_;
}

bool NotchInteraction::receive(const ApprovalRequest& request, Date now)
{
    if (!request.isNative()
        && !HookEventPolicy::acceptsApproval(request.eventName, request.toolName))
        return false;
    const bool waits = request.expiresAt > now; // A time that is not a number is never later.
    if (!waits || std::ranges::any_of(requests_, hasID(request.id)))
        return false;

    const bool first = requests_.empty();
    if (first) {
        selectedID_ = request.id;
        showAllParameters = false;
    }
    if (first || !expanded_)
        readyAt_ = now + handoffDelay;
    requests_.push_back(request);
    expanded_ = true;
    hoverBlockedUntilExit_ = false;
    return true;
}

bool NotchInteraction::pointerEntered()
{
    pointerInside_ = true;
    return !expanded_ && !hoverBlockedUntilExit_;
}

void NotchInteraction::pointerLeft()
{
    pointerInside_ = false;
    hoverBlockedUntilExit_ = false;
}

void NotchInteraction::expand(Date now)
{
    if (expanded_)
        return;
    expanded_ = true;
    hoverBlockedUntilExit_ = false;
    readyAt_ = now + handoffDelay;
}

void NotchInteraction::collapse()
{
    expanded_ = false;
    hoverBlockedUntilExit_ = pointerInside_;
}

void NotchInteraction::select(const std::string& id, Date now)
{
    if (feedback_ || id == selectedID_ || std::ranges::none_of(requests_, hasID(id)))
        return;
    selectedID_ = id;
    showAllParameters = false;
    readyAt_ = now + handoffDelay;
}

bool NotchInteraction::canDecide(const std::string& id, Date now) const
{
    if (!expanded_ || feedback_ || now < readyAt_)
        return false;
    const auto* request = current();
    return request && request->id == id && request->expiresAt > now;
}

void NotchInteraction::finish(const std::string& id, Feedback::Kind kind, bool isDemo)
{
    const auto finished = std::ranges::find_if(requests_, hasID(id));
    if (finished == requests_.end())
        return;
    feedback_ = Feedback{
        .id = UUID::random(), .kind = kind, .isDemo = isDemo, .isNative = finished->isNative()};
    requests_.erase(finished);
    selectedID_ = headID(requests_);
    showAllParameters = false;
    readyAt_ = Date::distantFuture();
}

void NotchInteraction::disconnected(const std::string& id, Date now)
{
    const auto gone = std::ranges::find_if(requests_, hasID(id));
    if (gone == requests_.end())
        return;
    if (current() == &*gone && !feedback_) {
        finish(id, now < gone->expiresAt ? Feedback::Kind::unavailable : Feedback::Kind::expired,
            false);
        return;
    }
    const bool wasSelected = selectedID_ == gone->id;
    requests_.erase(gone);
    if (wasSelected)
        selectedID_ = headID(requests_);
}

void NotchInteraction::dismissFeedback(Date now)
{
    feedback_.reset();
    readyAt_ = now + handoffDelay;
}

} // namespace notch
