// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppModel/DecisionGuard.h"

#include <algorithm>
#include <utility>

namespace notch {
namespace {

bool shows(const std::optional<ShownDecision>& shown, const NotchInteraction& interaction)
{
    if (shown && shown->reminder)
        return interaction.requests().empty();
    return shown && shown->requestID == interaction.currentID()
        && shown->showsAllParameters == interaction.showAllParameters;
}

} // namespace

void DecisionGuard::attach(const DecisionDisplay* display)
{
    display_ = display;
    shown_.reset();
    armed_ = false;
    armedAt_.reset();
}

bool DecisionGuard::look(Uptime now)
{
    if (!display_)
        return false;
    auto shown = display_->onShow();
    if (shown == shown_)
        return false;
    shown_ = std::move(shown);
    shownSince_ = now;
    armed_ = false;
    return true;
}

std::optional<Seconds> DecisionGuard::remaining(
    const NotchInteraction& interaction, Uptime now) const
{
    if (!display_)
        return Seconds{0};
    if (!shows(shown_, interaction))
        return std::nullopt;
    return std::max(shownSince_ + NotchInteraction::handoffDelay - now, Seconds{0});
}

bool DecisionGuard::holds(const NotchInteraction& interaction) const
{
    return !display_ || (shows(shown_, interaction) && isUnchanged());
}

bool DecisionGuard::hasShown(UUID reminder) const
{
    return !display_ || (armed_ && shown_ && shown_->reminder == reminder);
}

void DecisionGuard::arm()
{
    armed_ = true;
    armedAt_ = display_ ? display_->inputTime() : std::nullopt;
}

bool DecisionGuard::counts(const std::optional<InputTime>& press) const
{
    if (!display_ || !press)
        return true;
    const bool early = armedAt_ && *press - *armedAt_ <= Seconds{0};
    return !early && !presses_.followsAnother(*press, display_->doubleClickInterval());
}

} // namespace notch
