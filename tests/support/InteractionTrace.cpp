// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "support/InteractionTrace.h"

#include "Interaction/NotchInteraction.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <utility>

namespace notch {
namespace {

using Kind = NotchInteraction::Feedback::Kind;

constexpr std::array<std::pair<std::string_view, Kind>, 5> kinds{{
    {"allowed", Kind::allowed},
    {"denied", Kind::denied},
    {"returned", Kind::returned},
    {"expired", Kind::expired},
    {"unavailable", Kind::unavailable},
}};

Kind kindNamed(std::string_view word)
{
    for (const auto& [name, kind] : kinds) {
        if (name == word)
            return kind;
    }
    std::fprintf(stderr, "no such receipt: %s\n", std::string(word).c_str());
    std::abort();
}

std::string receiptText(const NotchInteraction::Feedback& feedback)
{
    std::string text = " receipt";
    for (const auto& [name, kind] : kinds) {
        if (kind == feedback.kind)
            text += ' ' + std::string(name);
    }
    return text + (feedback.isDemo ? " demo" : "") + (feedback.isNative ? " native" : "");
}

std::string readyText(Date readyAt, Date start)
{
    if (readyAt == Date::distantFuture())
        return " ready never";
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), " ready %.2f", (readyAt - start).count());
    return text.data();
}

std::string stateText(const NotchInteraction& state, Date start)
{
    std::string text = state.expanded() ? "open" : "closed";
    for (const auto& request : state.requests())
        text += request.id == state.currentID() ? " [" + request.id + ']' : ' ' + request.id;
    text += state.selectedID() == state.currentID() ? "" : " selected otherwise";
    text += readyText(state.readyAt(), start);
    text += state.pointerInside() ? " inside" : "";
    text += state.hoverBlockedUntilExit() ? " blocked" : "";
    text += state.showAllParameters ? " details" : "";
    return state.feedback() ? text + receiptText(*state.feedback()) : text;
}

class Player {
public:
    std::string play(const std::string& line)
    {
        std::istringstream words(line);
        std::string at;
        double time = 0;
        std::string operation;
        words >> at >> time >> operation;
        const auto answered = apply(operation, start_ + Seconds{time}, words);
        return answered + stateText(state_, start_);
    }

private:
    std::string apply(const std::string& operation, Date now, std::istringstream& words)
    {
        std::string id;
        if (operation == "receive")
            return answer(state_.receive(request(words), now));
        if (operation == "enter")
            return answer(state_.pointerEntered());
        if (operation == "can")
            return words >> id, answer(state_.canDecide(id, now));
        if (operation == "leave")
            state_.pointerLeft();
        else if (operation == "expand")
            state_.expand(now);
        else if (operation == "collapse")
            state_.collapse();
        else if (operation == "select")
            words >> id, state_.select(id, now);
        else if (operation == "finish")
            finish(words);
        else if (operation == "gone")
            words >> id, state_.disconnected(id, now);
        else if (operation == "dismiss")
            state_.dismissFeedback(now);
        else if (operation == "details")
            state_.showAllParameters = true;
        else
            return "(no such operation) ";
        return {};
    }

    static std::string answer(bool yes) { return yes ? "yes  " : "no  "; }

    ApprovalRequest request(std::istringstream& words) const
    {
        ApprovalRequest request{.toolName = "Bash", .eventName = "PermissionRequest"};
        std::string until;
        double time = 0;
        words >> request.id;
        if (request.id == "native")
            request.eventName = nativeApprovalEventName;
        else if (request.id == "question")
            request.toolName = "AskUserQuestion";
        else if (request.id == "foreign")
            request.eventName = "Stop";
        if (request.id.size() > 1)
            words >> request.id;
        words >> until >> time;
        request.expiresAt = start_ + Seconds{time};
        return request;
    }

    void finish(std::istringstream& words)
    {
        std::string id;
        std::string kind;
        std::string demo;
        words >> id >> kind >> demo;
        state_.finish(id, kindNamed(kind), demo == "demo");
    }

    Date start_{0}; // Exact, so that a guard's end can be hit exactly.
    NotchInteraction state_;
};

} // namespace

std::string playTrace(std::string_view trace)
{
    Player player;
    std::istringstream lines{std::string(trace)};
    std::string played;
    for (std::string line; std::getline(lines, line);) {
        const auto bar = line.find('|');
        const auto operation = line.substr(0, bar == std::string::npos ? line.size() : bar);
        played += operation.empty() ? "\n" : operation + "| " + player.play(operation) + '\n';
    }
    return played;
}

} // namespace notch
