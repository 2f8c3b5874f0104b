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
            {"at", [this] { now_ = moment(); }},
            {"receive", [this] { answer(interaction_.receive(request(), now_)); }},
            {"enter", [this] { answer(interaction_.pointerEntered()); }},
            {"leave", [this] { interaction_.pointerLeft(); }},
            {"expand", [this] { interaction_.expand(now_); }},
            {"collapse", [this] { interaction_.collapse(); }},
            {"select", [this] { interaction_.select(next(), now_); }},
            {"can", [this] { answer(interaction_.canDecide(next(), now_)); }},
            {"finish", [this] { finish(); }},
            {"gone", [this] { interaction_.disconnected(next(), now_); }},
            {"dismiss", [this] { interaction_.dismissFeedback(now_); }},
            {"details", [this] { interaction_.showAllParameters = true; }},
        };
    }

private:
    Date moment() { return start + Seconds{next<double>()}; }

    ApprovalRequest request()
    {
        ApprovalRequest request{.toolName = "Bash", .eventName = "PermissionRequest"};
        request.id = next();
        if (request.id == "native")
            request.eventName = nativeApprovalEventName;
        else if (request.id == "question")
            request.toolName = "AskUserQuestion";
        else if (request.id == "foreign")
            request.eventName = "Stop";
        if (request.id.size() > 1)
            request.id = next();
        next(); // "until"
        request.expiresAt = moment();
        return request;
    }

    void finish()
    {
        const auto id = next();
        const auto kind = std::ranges::find(kinds, next()) - kinds.begin();
        interaction_.finish(id, static_cast<Feedback::Kind>(kind), next() == "demo");
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
