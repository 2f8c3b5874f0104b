// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/Announcements.h"

#include "Foundation/Utf8.h"
#include "NotchView/ApprovalContent.h"
#include "NotchView/DisplayState.h"
#include "NotchView/HeaderContent.h"
#include "NotchView/ReceiptContent.h"

#include <utility>

namespace notch {
namespace {

// Long enough to recognise the command; the block of text has the whole.
constexpr std::size_t longestCommand = 200;
constexpr std::string_view armedText = "可以选择";
constexpr std::string_view pause = "。";

std::string spokenCommand(const std::string& command)
{
    const auto first = std::string(firstScalars(command, longestCommand));
    return first.size() == command.size() ? first : first + "…（未读完，请查看全文）";
}

std::string spokenRequest(const ApprovalRequest& request, Date now)
{
    const ApprovalContent content(request);
    const auto time = TimeLine::of(request, now);
    auto text = content.title;
    text.append(pause).append(spokenCommand(content.command));
    return time ? text.append(pause).append(time->seconds) : text;
}

std::string spokenReceipt(const NotchInteraction& interaction)
{
    const ReceiptContent content(*interaction.feedback(), interaction.requests().size());
    return std::string(content.title).append(pause).append(content.note);
}

// Empty when there is nothing to announce.
std::string matterOf(const AppModelState& state)
{
    switch (displayState(state)) {
    case DisplayState::approval:
        return "request " + *state.interaction.currentID();
    case DisplayState::receipt:
        return "receipt " + state.interaction.feedback()->id.text();
    case DisplayState::question:
        return "question";
    case DisplayState::completion:
        return "turn's end";
    case DisplayState::idle:
        return {};
    }
    return {};
}

std::string spokenMatter(const AppModelState& state, Date now)
{
    switch (displayState(state)) {
    case DisplayState::approval:
        return spokenRequest(*state.interaction.current(), now);
    case DisplayState::receipt:
        return spokenReceipt(state.interaction);
    case DisplayState::question:
    case DisplayState::completion:
    case DisplayState::idle:
        break;
    }
    return std::string(HeaderContent(state).text);
}

} // namespace

std::optional<std::string> Announcements::next(const AppModelState& state, Date now)
{
    if (!state.isExpanded())
        return std::nullopt;
    const auto matter = matterOf(state);
    if (std::exchange(matter_, matter) != matter) {
        armedTold_ = false;
        return matter.empty() ? std::nullopt : std::optional(spokenMatter(state, now));
    }
    if (!state.actionReady || std::exchange(armedTold_, true))
        return std::nullopt;
    return std::string(armedText);
}

} // namespace notch
