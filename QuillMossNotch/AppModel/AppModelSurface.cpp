// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// The part of the model that decides nothing: what the notch shows, when it opens and closes.

#include "AppModel/AppModel.h"

#include "Interaction/ApprovalPresentation.h"

#include <algorithm>
#include <array>
#include <utility>

namespace notch {
namespace {

constexpr Seconds hoverDwell{0.22};
constexpr Seconds collapseAfterPointerLeft{0.7};
constexpr Seconds copiedMark{1.5};
constexpr auto hostMissing = "未在 Applications 找到 QuillMoss，请手动打开";
constexpr auto hostFailed = "无法打开 QuillMoss，请手动打开";

} // namespace

// Which request is on screen, and how

void AppModel::select(const std::string& id)
{
    const Change change(*this);
    if (id == state_.interaction.currentID())
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
    if (std::exchange(state_.interaction.showAllParameters, on) != on && guard_.isAttached())
        armReadiness(); // Another form of the request is something else to decide.
}

void AppModel::copyRequest(const ApprovalRequest& request)
{
    const Change change(*this);
    dependencies_.pasteboard.setText(state_.interaction.showAllParameters
                                         ? request.toolInputJSON.string()
                                         : ApprovalPresentation(request).primaryText);
    state_.copiedRequestID = request.id;
    copiedWork_ = dependencies_.mainQueue.after(copiedMark, [this] {
        const Change end(*this);
        state_.copiedRequestID.reset();
    });
}

// Open and closed

void AppModel::expand()
{
    const Change change(*this);
    collapseWork_.cancel();
    hoverWork_.cancel();
    state_.interaction.expand(now());
    armReadiness();
    refreshReminders();
}

void AppModel::collapse()
{
    const Change change(*this);
    questions_.willCollapse();
    completions_.willCollapse();
    withdraw();
}

void AppModel::setPointerInside(bool inside)
{
    const Change change(*this);
    hoverWork_.cancel();
    collapseWork_.cancel();
    if (inside) {
        completions_.pointerEntered();
        if (state_.interaction.pointerEntered() && isOn(Preference::hoverToExpand))
            scheduleHover();
        return;
    }
    const bool wasInside = state_.interaction.pointerInside();
    state_.interaction.pointerLeft();
    if (!completions_.isOnShow())
        scheduleAutoCollapse(collapseAfterPointerLeft);
    else if (wasInside)
        completions_.pointerLeft();
}

void AppModel::scheduleHover()
{
    hoverWork_ = dependencies_.mainQueue.after(hoverDwell, [this] {
        if (state_.interaction.pointerInside() && !state_.interaction.hoverBlockedUntilExit())
            expand();
    });
}

bool AppModel::mayAutoCollapse() const
{
    // Reminders collapse by rules of their own.
    return state_.interaction.canAutoCollapse() && !questions_.isOnShow()
        && !completions_.isOnShow() && isOn(Preference::autoCollapse);
}

void AppModel::scheduleAutoCollapse(Seconds delay)
{
    collapseWork_.cancel();
    if (!mayAutoCollapse())
        return;
    collapseWork_ = dependencies_.mainQueue.after(delay, [this] {
        if (mayAutoCollapse())
            collapse();
    });
}

void AppModel::handleOutsideInteraction()
{
    // With the pointer inside, this click was queued before it came in, and a collapse now would
    // block the hover that has just begun.
    const auto& interaction = state_.interaction;
    if (interaction.canAutoCollapse() && !questions_.isOnShow() && isOn(Preference::autoCollapse))
        collapse();
}

// The host

void AppModel::openHost(const std::optional<std::string>& source)
{
    using enum QuillMossProfile; // clang 14 takes no alias here.
    const Change change(*this);
    const auto* current = state_.interaction.current();
    const auto edition = source ? *source : current ? current->source : std::string();
    auto candidates = std::array{quillmoss, quillmossAI};
    if (parseQuillMossProfile(edition) == quillmossAI)
        std::ranges::reverse(candidates);
    const auto* const installed = std::ranges::find_if(
        candidates, [&](auto candidate) { return dependencies_.workspace.isInstalled(candidate); });
    if (installed == candidates.end()) {
        hostNotOpened(hostMissing);
        return;
    }
    dependencies_.workspace.open(*installed, [weak = std::weak_ptr(self_)] {
        if (const auto self = weak.lock())
            (*self)->hostNotOpened(hostFailed);
    });
}

void AppModel::hostNotOpened(const std::string& text)
{
    const Change change(*this);
    fail(text);
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
