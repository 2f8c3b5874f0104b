// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "support/InteractionTrace.h"

#include "support/TracePlayer.h"

#include <array>
#include <cstdio>

namespace notch {
namespace {

using Feedback = NotchInteraction::Feedback;

constexpr std::array<std::string_view, 5> kinds{
    "allowed", "denied", "returned", "expired", "unavailable"};

std::string receiptText(const Feedback& feedback)
{
    return " receipt " + std::string(kinds.at(static_cast<std::size_t>(feedback.kind)))
         + (feedback.isDemo ? " demo" : "") + (feedback.isNative ? " native" : "");
}

constexpr Date start{0}; // Exact, so that a guard's end can be hit exactly.

std::string readyText(Date readyAt)
{
    if (readyAt == Date::distantFuture())
        return " ready never";
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), " ready %.2f", (readyAt - start).count());
    return text.data();
}

class InteractionPlayer final : public TracePlayer {
public:
    InteractionPlayer()
    {
        operations_ = {
            {"at", [this](Words& words) { now_ = moment(words); }},
            {"receive",
                [this](Words& words) { answer(interaction_.receive(request(words), now_)); }},
            {"enter", [this](Words&) { answer(interaction_.pointerEntered()); }},
            {"leave", [this](Words&) { interaction_.pointerLeft(); }},
            {"expand", [this](Words&) { interaction_.expand(now_); }},
            {"collapse", [this](Words&) { interaction_.collapse(); }},
            {"select", [this](Words& words) { interaction_.select(next(words), now_); }},
            {"can", [this](Words& words) { answer(interaction_.canDecide(next(words), now_)); }},
            {"finish", [this](Words& words) { finish(words); }},
            {"gone", [this](Words& words) { interaction_.disconnected(next(words), now_); }},
            {"dismiss", [this](Words&) { interaction_.dismissFeedback(now_); }},
            {"details", [this](Words&) { interaction_.showAllParameters = true; }},
        };
    }

private:
    static Date moment(Words& words) { return start + Seconds{next<double>(words)}; }

    static ApprovalRequest request(Words& words)
    {
        ApprovalRequest request{.toolName = "Bash", .eventName = "PermissionRequest"};
        request.id = next(words);
        if (request.id == "native")
            request.eventName = nativeApprovalEventName;
        else if (request.id == "question")
            request.toolName = "AskUserQuestion";
        else if (request.id == "foreign")
            request.eventName = "Stop";
        if (request.id.size() > 1)
            request.id = next(words);
        next(words); // "until"
        request.expiresAt = moment(words);
        return request;
    }

    void finish(Words& words)
    {
        const auto id = next(words);
        const auto kind = std::ranges::find(kinds, next(words)) - kinds.begin();
        interaction_.finish(id, static_cast<Feedback::Kind>(kind), next(words) == "demo");
    }

    std::string stateText() override
    {
        return printed(interaction_, readyText(interaction_.readyAt()));
    }

    Date now_ = start;
    NotchInteraction interaction_;
};

} // namespace

std::string playTrace(std::string_view trace)
{
    return InteractionPlayer().played(trace);
}

std::string printed(const NotchInteraction& interaction, const std::string& readiness)
{
    const auto current = interaction.currentID();
    std::string text = interaction.expanded() ? "open" : "closed";
    for (const auto& request : interaction.requests()) {
        const auto shown = request.source == "demo" ? "demo" : request.id;
        text += request.id == current ? " [" + shown + ']' : ' ' + shown;
    }
    text += interaction.selectedID() == current ? "" : " selected otherwise";
    text += readiness;
    text += interaction.pointerInside() ? " inside" : "";
    text += interaction.hoverBlockedUntilExit() ? " blocked" : "";
    text += interaction.showAllParameters ? " details" : "";
    return interaction.feedback() ? text + receiptText(*interaction.feedback()) : text;
}

} // namespace notch
