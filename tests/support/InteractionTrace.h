// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Rehearsal/InteractionText.h"
#include "Rehearsal/TracePlayer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>

namespace notch {

// Plays operations on a NotchInteraction and writes the state after each line:
//
//   at 0.00 receive A until 50  | yes  open [A] ready 0.45
//
// Operations: at T, receive [native|question|foreign] ID until T, enter, leave, expand, collapse,
// select ID, can ID, finish ID KIND [demo], gone ID, dismiss, details.
// Times are in seconds from an arbitrary start.
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
    Date moment() { return start + Seconds{std::stod(next())}; }

    ApprovalRequest request()
    {
        ApprovalRequest request{.toolName = "Bash", .eventName = "PermissionRequest"};
        request.id = next();
        const auto kind = request.id.size() > 1 ? std::exchange(request.id, next()) : "";
        if (kind == "native")
            request.eventName = nativeApprovalEventName;
        else if (kind == "question")
            request.toolName = "AskUserQuestion";
        else if (kind == "foreign")
            request.eventName = "Stop";
        else
            EXPECT_EQ(kind, "") << "no such request";
        EXPECT_EQ(next(), "until");
        request.expiresAt = moment();
        return request;
    }

    void finish()
    {
        const auto id = next();
        const auto kind = std::ranges::find(receiptNames, next()) - receiptNames.begin();
        ASSERT_LT(kind, std::ssize(receiptNames)) << "no such receipt";
        interaction_.finish(id, static_cast<NotchInteraction::Feedback::Kind>(kind), given("demo"));
    }

    std::string stateText() override
    {
        if (interaction_.readyAt() == Date::distantFuture())
            return printed(interaction_, " ready never");
        std::array<char, 32> ready{};
        const auto seconds = (interaction_.readyAt() - start).count();
        std::snprintf(ready.data(), ready.size(), " ready %.2f", seconds);
        return printed(interaction_, ready.data());
    }

    static constexpr Date start{0}; // Exact, so that a guard's end can be hit exactly.

    Date now_ = start;
    NotchInteraction interaction_;
};

inline std::string playTrace(std::string_view trace)
{
    return InteractionPlayer().played(trace);
}

} // namespace notch
