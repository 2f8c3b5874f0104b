// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Interaction/CompletionReminderState.h"

#include "Rehearsal/TracePlayer.h"

#include <gtest/gtest.h>
#include <string>

namespace notch {
namespace {

// Plays turns on a CompletionReminderState:
//
//   start SESSION[/TURN] …   end SESSION[/TURN] …   tick   claim [blocked]   collapse
//   dismiss [another]   clear   off   reset   at TIME
//
// An event may go on with "agent NAME", "process NUMBER" (7 otherwise; 0 for no host), "age
// SECONDS", "front" and "reason WORD" ("completed" otherwise, "none" for no reason).
class CompletionPlayer final : public TracePlayer {
public:
    CompletionPlayer()
    {
        operations_ = {
            {"at", [this] { now_ = Date{std::stod(next())}; }},
            {"start", [this] { observe(CompletionEvent::Kind::started, {}); }},
            {"end",
                [this] {
                    observe(CompletionEvent::Kind::ended, CompletionEvent::Reason::completed);
                }},
            {"tick", [this] { state.refresh(now_); }},
            {"claim",
                [this] {
                    const bool canPresent = !given("blocked");
                    answer(state.claimAutoExpansion(canPresent, now_).has_value());
                }},
            {"collapse", [this] { state.collapse(); }},
            {"dismiss",
                [this] {
                    const auto token = state.current() ? state.current()->token : UUID();
                    state.dismiss(given("another") ? UUID::random() : token);
                }},
            {"clear", [this] { state.clearPresentation(); }},
            {"off", [this] { state.observe({}, 7, true, false, now_); }},
            {"reset", [this] { state.reset(); }},
        };
    }

    CompletionReminderState state;

private:
    void observe(CompletionEvent::Kind kind, std::optional<CompletionEvent::Reason> reason)
    {
        const auto turn = next();
        const auto slash = turn.find('/');
        CompletionEvent event{.id = UUID::random().text(),
            .sessionID = turn.substr(0, slash),
            .kind = kind,
            .reason = reason,
            .observedAt = now_};
        if (slash != turn.npos)
            event.generationID = turn.substr(slash + 1);
        std::int32_t pid = 7;
        bool background = true;
        while (const auto option = more()) {
            if (*option == "agent")
                event.agentID = next();
            else if (*option == "process")
                pid = next<std::int32_t>();
            else if (*option == "age")
                event.observedAt = now_ + Seconds{-next<double>()};
            else if (*option == "reason")
                event.reason = parseCompletionReason(next());
            else if (*option == "front")
                background = false;
            else
                ADD_FAILURE() << "no such option: " << *option;
        }
        state.observe(event, pid == 0 ? std::nullopt : std::optional(pid), background, true, now_);
    }

    // The current reminder and how many wait.
    std::string stateText() override
    {
        const auto& current = state.current();
        const auto waiting = state.queuedCount() - (current ? 1 : 0);
        return (current ? current->event.sessionID + '/' + *current->event.generationID : "none")
             + (state.hasBeenPresented() ? " presented" : "")
             + (waiting > 0 ? ", " + std::to_string(waiting) + " waiting" : "");
    }

    Date now_;
};

struct Trace {
    const char* name;
    const char* text;
};

const Trace traces[] = {
    {"is shown from 0.8 to 30 seconds",
        R"(at -100, start a/1             | none
at 0, end a/1, at 0.7999, tick | none, 1 waiting
at 0.8, tick, at 29.999, tick  | a/1
at 30, tick                    | none
)"},
    {"gets old while it waits",
        R"(start a/1   | none
end a/1     | none, 1 waiting
at 30, tick | none
)"},
    {"end in front is no reminder later",
        R"(start a/1, at 1, end a/1 front, at 2, end a/1, at 3, tick | none
)"},
    {"other reasons consume the turn",
        R"(start a/1, end a/1 reason interrupted, end a/1, start b/1 | none
end b/1 reason cancelled, end b/1, start c/1              | none
end c/1 reason failed, end c/1, start d/1                 | none
end d/1 reason unknown, end d/1, start e/1                | none
end e/1 reason none, end e/1                              | none
)"},
    {"mismatched end leaves the turn open",
        R"(start a/1 agent x, at 1, end a/2 agent x, end a agent x | none
end a/1 agent y, end a/1, end a/1 agent x process 8     | none
end b/1 agent x, end a/1 agent x age 1.5                | none
end a/1 agent x                                         | none, 1 waiting
)"},
    {"event of three seconds is fresh enough",
        R"(at 10, start a/1 age 3.1, start b/1 age -0.1, end a/1, end b/1 | none
at 20, start a/1 age 3, at 23, end a/1 age 3.1                 | none
end a/1 age -0.1                                               | none
end a/1 age 3                                                  | none, 1 waiting
)"},
    {"without exactly one host nothing counts",
        R"(start a/1 process 0, end a/1, start a/1 process -7 | none
end a/1 process -7, start a/1, end a/1 process 0   | none
end a/1                                            | none, 1 waiting
)"},
    {"invalid event is not observed",
        R"(start a*/1, end a*/1 | none
)"},
    {"replayed start opens nothing",
        R"(start a/1                                                     | none
end a/1                                                       | none, 1 waiting
at 1, tick                                                    | a/1
dismiss, at 2, start a/1, end a/1, at 3, start a/2, start a/1 | none
end a/1                                                       | none
end a/2                                                       | none, 1 waiting
)"},
    {"start without generation closes the turn",
        R"(start a/1, at 1, start a, at 2, end a/1     | none
at 3, start a/2 age 2.5, end a/2, start a/2 | none
end a/2                                     | none, 1 waiting
at 4, start b                               | a/2
start a                                     | none
)"},
    {"late start disturbs nothing",
        R"(start a/1, at 2, start a/2 age 2.5, start a age 2.5 | none
end a/1                                             | none, 1 waiting
at 3, start a/3 age 1.5                             | a/1
at 4, start a/3 age 2                               | none
)"},
    {"start of another agent is refused",
        R"(start a/1, at 1, start a/2 agent x, end a/2 agent x | none
end a/1                                             | none, 1 waiting
)"},
    {"new turn removes what the session has",
        R"(start a/1, start b/1 | none
end a/1              | none, 1 waiting
end b/1              | none, 2 waiting
at 1, start b/2      | a/1
start a/2            | none
end a/2              | none, 1 waiting
start a/3            | none
)"},
    {"one comes after the other",
        R"(start a/1, start b/1  | none
end b/1               | none, 1 waiting
at 0.5, end a/1       | none, 2 waiting
at 0.9, tick          | b/1, 1 waiting
dismiss, at 1.2, tick | none, 1 waiting
at 1.3, tick          | a/1
)"},
    {"opens once by itself",
        R"(start a/1, start b/1                        | none
end a/1                                     | none, 1 waiting
end b/1, at 0.5, claim                      | no  none, 2 waiting
at 0.8, claim blocked                       | no  a/1, 1 waiting
at 0.9, claim, at 1, claim, dismiss another | yes  no  a/1 presented, 1 waiting
dismiss                                     | none, 1 waiting
tick                                        | b/1
collapse, claim                             | no  b/1 presented
)"},
    {"collapse without reminder marks none",
        R"(collapse, start a/1 | none
end a/1, collapse   | none, 1 waiting
at 1, claim         | yes  a/1 presented
)"},
    {"cleared ones do not come back",
        R"(start a/1, start b/1, start c/1    | none
end a/1                            | none, 1 waiting
end b/1                            | none, 2 waiting
at 1, claim                        | yes  a/1 presented, 1 waiting
clear, end a/1, start a/1, end a/1 | none
end c/1                            | none, 1 waiting
)"},
    {"switched off forgets everything",
        R"(start a/1               | none
end a/1                 | none, 1 waiting
at 1, claim             | yes  a/1 presented
off, end a/1, start a/1 | none
end a/1                 | none, 1 waiting
reset                   | none
)"},
    {"clock set back drops what it made younger",
        R"(at 9, start a/1         | none
end a/1                 | none, 1 waiting
at 10, claim, start b/1 | yes  a/1 presented
end b/1                 | a/1 presented, 1 waiting
at 8, tick              | none
)"},
    {"time that is no number takes all away",
        R"(start a/1             | none
end a/1               | none, 1 waiting
at 1, tick, start b/1 | a/1
end b/1               | a/1, 1 waiting
at nan, tick          | none
)"},
};

TEST(CompletionReminderState, goesAsWritten)
{
    for (const auto& [name, text] : traces)
        EXPECT_EQ(CompletionPlayer().played(text), text) << name;
}

TEST(CompletionReminderState, tracksNoMoreThan256Sessions)
{
    CompletionPlayer player;
    for (int session = 0; session < 255; ++session)
        player.play("start " + std::to_string(session) + "/1");
    EXPECT_FALSE(player.state.trackingLimited());
    player.play("start 255/1");
    EXPECT_TRUE(player.state.trackingLimited());

    EXPECT_EQ(player.after("start 256/1, end 256/1"), "none");
    EXPECT_EQ(player.state.trackedSessionCount(), 256U);
    // A session that is tracked already goes on.
    EXPECT_EQ(player.after("start 0/2, end 0/2"), "none, 1 waiting");
    EXPECT_EQ(player.after("reset, start 256/1, end 256/1"), "none, 1 waiting");
}

TEST(CompletionReminderState, remembersNoMoreThan4096Starts)
{
    CompletionPlayer player;
    for (int turn = 0; turn < 4095; ++turn)
        player.play("start a/" + std::to_string(turn));
    EXPECT_FALSE(player.state.trackingLimited());
    EXPECT_EQ(player.after("start a/4095, end a/4095"), "none, 1 waiting");
    EXPECT_TRUE(player.state.trackingLimited());

    // The last turn's is undisturbed.
    EXPECT_EQ(player.after("start b/1, end b/1, start a/4096"), "none, 1 waiting");
    EXPECT_EQ(player.state.trackedSessionCount(), 1U);
}

TEST(CompletionReminderState, keepsNoMoreThan16Reminders)
{
    CompletionPlayer player;
    for (int session = 0; session < 16; ++session)
        player.play(
            "start s" + std::to_string(session) + "/1, end s" + std::to_string(session) + "/1");
    EXPECT_EQ(player.after("start t/1, end t/1"), "none, 16 waiting");
    EXPECT_EQ(player.after("at 1, start u/1, end u/1"), "s0/1, 15 waiting"); // It counts.
    EXPECT_EQ(player.after("dismiss, start v/1, end v/1"), "s1/1, 15 waiting");
}

} // namespace
} // namespace notch
