// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchPanel/Raising.h"

#include "AppModel/AppModel.h"

namespace notch {

std::optional<std::string> presentMatter(const AppModelState& state)
{
    if (const auto request = state.interaction.currentID())
        return "request " + *request;
    if (const auto& question = state.questionState.visible())
        return "question " + question->flowID;
    if (const auto& turn = state.completionState.current)
        return "turn's end " + turn->token.text();
    return std::nullopt;
}

Raising::Raising(NotchSurface& panel, const Clock& clock, MainQueue& queue)
    : panel_(panel)
    , clock_(clock)
    , queue_(queue)
{
}

void Raising::setMatter(const std::optional<std::string>& matter)
{
    if (matter == matter_)
        return;
    matter_ = matter;
    later_.cancel();
    if (matter)
        panel_.bringToFront();
    panel_.watchCover(matter.has_value());
}

void Raising::hidden()
{
    const Uptime now = clock_.uptime();
    while (!raised_.empty() && now - raised_.front() >= period)
        raised_.pop_front();
    if (raised_.size() < most)
        raise();
    else
        later_ = queue_.after(raised_.front() + period - now, [this] { hidden(); });
}

void Raising::raise()
{
    raised_.push_back(clock_.uptime());
    panel_.bringToFront();
}

} // namespace notch
