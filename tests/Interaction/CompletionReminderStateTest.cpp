// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "CompletionPlayer.h"

namespace notch {
namespace {

struct Trace {
    const char* name;
    const char* words; // Each operation with ":" and the state that must follow it.
};

const Trace traces[] = {
    {"is shown from 0.8 to 30 seconds",
        "@-100 +a/1:- @0 -a/1:-+1 @0.7999 tick:-+1 @0.8 tick:a/1 @29.999 tick:a/1 @30 tick:-"},
    {"gets old while it waits", "+a/1:- -a/1:-+1 @30 tick:-"},
    {"end in front is no reminder later", "+a/1:- @1 -a/1,front:- @2 -a/1:- @3 tick:-"},
    {"other reasons consume the turn",
        "+a/1:- -a/1,interrupted:- -a/1:- +b/1:- -b/1,cancelled:- -b/1:- +c/1:- -c/1,failed:- "
        "-c/1:- +d/1:- -d/1,unknown:- -d/1:- +e/1:- -e/1,none:- -e/1:-"},
    {"mismatched end leaves the turn open",
        "+a/1,agent=x:- @1 -a/2,agent=x:- -a,agent=x:- -a/1,agent=y:- -a/1:- "
        "-a/1,agent=x,pid=8:- -b/1,agent=x:- -a/1,agent=x,age=1.5:- -a/1,agent=x:-+1"},
    {"event of three seconds is fresh enough",
        "@10 +a/1,age=3.1:- +b/1,age=-0.1:- -a/1:- -b/1:- "
        "@20 +a/1,age=3:- @23 -a/1,age=3.1:- -a/1,age=-0.1:- -a/1,age=3:-+1"},
    {"without exactly one host nothing counts",
        "+a/1,pid=0:- -a/1:- +a/1,pid=-7:- -a/1,pid=-7:- +a/1:- -a/1,pid=0:- -a/1:-+1"},
    {"invalid event is not observed", "+a*/1:- -a*/1:-"},
    {"replayed start opens nothing", "+a/1:- -a/1:-+1 @1 tick:a/1 dismiss:- @2 +a/1:- -a/1:- "
                                     "@3 +a/2:- +a/1:- -a/1:- -a/2:-+1"},
    {"start without generation closes the turn",
        "+a/1:- @1 +a:- @2 -a/1:- @3 +a/2,age=2.5:- -a/2:- +a/2:- -a/2:-+1 @4 +b:a/2 +a:-"},
    {"late start disturbs nothing",
        "+a/1:- @2 +a/2,age=2.5:- +a,age=2.5:- -a/1:-+1 @3 +a/3,age=1.5:a/1 @4 +a/3,age=2:-"},
    {"start of another agent is refused", "+a/1:- @1 +a/2,agent=x:- -a/2,agent=x:- -a/1:-+1"},
    {"new turn removes what the session has",
        "+a/1:- +b/1:- -a/1:-+1 -b/1:-+2 @1 +b/2:a/1 +a/2:- -a/2:-+1 +a/3:-"},
    {"one comes after the other",
        "+a/1:- +b/1:- -b/1:-+1 @0.5 -a/1:-+2 @0.9 tick:b/1+1 dismiss:-+1 @1.2 tick:-+1 "
        "@1.3 tick:a/1"},
    {"opens once by itself",
        "+a/1:- +b/1:- -a/1:-+1 -b/1:-+2 @0.5 claim:-+2 @0.8 claim!:a/1+1 @0.9 claim:>a/1!+1 "
        "@1 claim:a/1!+1 stale:a/1!+1 dismiss:-+1 tick:b/1 collapse:b/1! claim:b/1!"},
    {"collapse without reminder marks none",
        "collapse:- +a/1:- -a/1:-+1 collapse:-+1 @1 claim:>a/1!"},
    {"cleared ones do not come back",
        "+a/1:- +b/1:- +c/1:- -a/1:-+1 -b/1:-+2 @1 claim:>a/1!+1 clear:- -a/1:- +a/1:- -a/1:- "
        "-c/1:-+1"},
    {"switched off forgets everything",
        "+a/1:- -a/1:-+1 @1 claim:>a/1! off:- -a/1:- +a/1:- -a/1:-+1 reset:-"},
    {"clock set back drops what it made younger",
        "@9 +a/1:- -a/1:-+1 @10 claim:>a/1! +b/1:a/1! -b/1:a/1!+1 @8 tick:-"},
    {"time that is no number takes all away",
        "+a/1:- -a/1:-+1 @1 tick:a/1 +b/1:a/1 -b/1:a/1+1 @nan tick:-"},
};

TEST(CompletionReminderState, goesAsWritten)
{
    for (const auto& [name, script] : traces) {
        CompletionPlayer player;
        std::istringstream words(script);
        for (std::string word; words >> word;) {
            const auto operation = word.substr(0, word.find(':'));
            const auto state = player.play(operation);
            EXPECT_EQ(word[0] == '@' ? operation : operation + ':' + state, word) << name;
        }
    }
}

TEST(CompletionReminderState, tracksNoMoreThan256Sessions)
{
    CompletionPlayer player;
    for (int session = 0; session < 255; ++session)
        player.play('+' + std::to_string(session) + "/1");
    EXPECT_FALSE(player.state().trackingLimited());
    player.play("+255/1");
    EXPECT_TRUE(player.state().trackingLimited());

    EXPECT_EQ(player.play("+256/1 -256/1"), "-");
    EXPECT_EQ(player.state().trackedSessionCount(), 256U);
    EXPECT_EQ(player.play("+0/2 -0/2"), "-+1"); // A session that is tracked already goes on.
    EXPECT_EQ(player.play("reset +256/1 -256/1"), "-+1");
}

TEST(CompletionReminderState, remembersNoMoreThan4096Starts)
{
    CompletionPlayer player;
    for (int generation = 0; generation < 4095; ++generation)
        player.play("+a/" + std::to_string(generation));
    EXPECT_FALSE(player.state().trackingLimited());
    EXPECT_EQ(player.play("+a/4095 -a/4095"), "-+1");
    EXPECT_TRUE(player.state().trackingLimited());

    EXPECT_EQ(player.play("+b/1 -b/1 +a/4096"), "-+1"); // The last turn's, undisturbed.
    EXPECT_EQ(player.state().trackedSessionCount(), 1U);
}

TEST(CompletionReminderState, keepsNoMoreThan16Reminders)
{
    CompletionPlayer player;
    for (int session = 0; session < 16; ++session)
        player.play("+s" + std::to_string(session) + "/1 -s" + std::to_string(session) + "/1");
    EXPECT_EQ(player.play("+t/1 -t/1"), "-+16");
    EXPECT_EQ(player.play("@1 +u/1 -u/1"), "s0/1+15"); // The current one counts.
    EXPECT_EQ(player.play("dismiss +v/1 -v/1"), "s1/1+15");
}

} // namespace
} // namespace notch
