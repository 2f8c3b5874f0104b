// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Interaction/CompletionReminderState.h"

#include <gtest/gtest.h>
#include <sstream>

namespace notch {
namespace {

const std::string id = "A1B2C3D4-0000-4000-8000-00000000000F";

// Plays one line of a trace and prints the state behind it.
//
//   TIME start SESSION GENERATION [OPTION…]           "-" for a start that names no generation
//   TIME end SESSION GENERATION REASON [OPTION…]      "-" for an end without a reason
//   TIME tick | claim | claim-blocked | collapse | dismiss | dismiss-stale | clear | reset
//
// OPTION is agent=A, pid=N (7 else; 0 for no host), age=SECONDS, foreground or disabled.
// The state is the current reminder, "seen" once presented, and the number of those that wait;
// before it stands "opens" when a claim was granted.
class Player {
public:
    std::string play(const std::string& line)
    {
        std::istringstream words(line);
        Date now;
        std::string operation;
        words >> now.seconds >> operation;
        std::string granted;
        if (operation == "start" || operation == "end")
            observe(operation, words, now);
        else if (operation == "tick")
            state_.refresh(now);
        else if (operation == "claim" || operation == "claim-blocked")
            granted = state_.claimAutoExpansion(operation == "claim", now) ? "opens " : "";
        else if (operation == "collapse")
            state_.collapse();
        else if (operation == "dismiss")
            state_.dismiss(state_.current()->token);
        else if (operation == "dismiss-stale")
            state_.dismiss(UUID::random());
        else if (operation == "clear")
            state_.clearPresentation();
        else if (operation == "reset")
            state_.reset();
        else
            ADD_FAILURE() << "no such operation: " << line;
        return granted + printedState();
    }

private:
    void observe(const std::string& operation, std::istream& words, Date now)
    {
        CompletionEvent event{.id = id, .observedAt = now};
        std::string generation;
        words >> event.sessionID >> generation;
        if (generation != "-")
            event.generationID = generation;
        if (operation == "end") {
            event.kind = CompletionEvent::Kind::ended;
            std::string reason;
            words >> reason;
            event.reason = parseCompletionReason(reason);
        }
        std::optional<std::int32_t> pid = 7;
        bool background = true;
        bool enabled = true;
        for (std::string option; words >> option;) {
            const auto value = option.substr(option.find('=') + 1);
            if (option.starts_with("agent="))
                event.agentID = value;
            else if (option.starts_with("pid="))
                pid = value == "0" ? std::nullopt : std::optional(std::stoi(value));
            else if (option.starts_with("age="))
                event.observedAt = now + Seconds{-std::stod(value)};
            else if (option == "foreground")
                background = false;
            else if (option == "disabled")
                enabled = false;
            else
                ADD_FAILURE() << "no such option: " << option;
        }
        state_.observe(event, pid, background, enabled, now);
    }

    std::string printedState() const
    {
        const auto& current = state_.current();
        std::string text = "-";
        if (current)
            text = current->event.sessionID + "/" + *current->event.generationID;
        if (state_.hasBeenPresented())
            text += " seen";
        if (const auto waiting = state_.queuedCount() - (current ? 1 : 0); waiting > 0)
            text += " +" + std::to_string(waiting);
        return text;
    }

    CompletionReminderState state_;
};

std::string trimmed(const std::string& text)
{
    const auto first = text.find_first_not_of(' ');
    return first == std::string::npos ? ""
                                      : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

struct Trace {
    const char* name;
    const char* lines; // Each a line for the player, " -> " and the state that must follow.
};

class CompletionReminderTrace : public testing::TestWithParam<Trace> { };

TEST_P(CompletionReminderTrace, goesAsWritten)
{
    Player player;
    std::string played;
    std::string written;
    std::istringstream lines(GetParam().lines);
    for (std::string line; std::getline(lines, line);) {
        const auto arrow = line.find("->");
        if (arrow == std::string::npos)
            continue;
        const auto step = trimmed(line.substr(0, arrow));
        played += step + " -> " + player.play(step) + "\n";
        written += step + " -> " + trimmed(line.substr(arrow + 2)) + "\n";
    }
    EXPECT_EQ(played, written);
}

const Trace traces[] = {
    {"pairIsShownFrom0_8To30Seconds", R"(
        0      start a 1           -> -
        100    end a 1 completed   -> - +1
        100.75 tick                -> - +1
        100.85 tick                -> a/1
        129.9  tick                -> a/1
        130    tick                -> -
    )"},
    {"edgesOfTheLifetime", R"(
        0      start a 1           -> -
        0      end a 1 completed   -> - +1
        0.7999 tick                -> - +1
        0.8    tick                -> a/1
        29.999 tick                -> a/1
        30     tick                -> -
    )"},
    {"waitingReminderGetsOldToo", R"(
        0      start a 1           -> -
        0      end a 1 completed   -> - +1
        30     tick                -> -
    )"},
    {"endWithoutStart", R"(
        0      end a 1 completed   -> -
        5      tick                -> -
    )"},
    {"duplicateEndInTheBackgroundRevivesNoForegroundEnd", R"(
        0      start a 1                       -> -
        1      end a 1 completed foreground    -> -
        2      end a 1 completed               -> -
        3      tick                            -> -
    )"},
    {"otherReasonsConsumeTheTurn", R"(
        0      start a 1           -> -
        0      end a 1 interrupted -> -
        0      end a 1 completed   -> -
        0      start b 1           -> -
        0      end b 1 cancelled   -> -
        0      end b 1 completed   -> -
        0      start c 1           -> -
        0      end c 1 failed      -> -
        0      end c 1 completed   -> -
        0      start d 1           -> -
        0      end d 1 unknown     -> -
        0      end d 1 completed   -> -
        0      start e 1           -> -
        0      end e 1 -           -> -
        0      end e 1 completed   -> -
    )"},
    {"mismatchedEndLeavesTheTurnOpen", R"(
        0      start a 1 agent=x             -> -
        1      end a 2 completed agent=x     -> -
        1      end a - completed agent=x     -> -
        1      end a 1 completed agent=y     -> -
        1      end a 1 completed             -> -
        1      end a 1 completed agent=x pid=8 -> -
        1      end b 1 completed agent=x     -> -
        1      end a 1 completed agent=x age=1.5 -> -
        1      end a 1 completed agent=x     -> - +1
    )"},
    {"eventsOfThreeSecondsAreFreshEnough", R"(
        10     start a 1 age=3.1             -> -
        10     start b 1 age=-0.1            -> -
        10     end a 1 completed             -> -
        10     end b 1 completed             -> -
        20     start a 1 age=3               -> -
        23     end a 1 completed age=3.1     -> -
        23     end a 1 completed age=-0.1    -> -
        23     end a 1 completed age=3       -> - +1
    )"},
    {"withoutExactlyOneHostNothingCounts", R"(
        0      start a 1 pid=0               -> -
        0      end a 1 completed             -> -
        0      start a 1 pid=-7              -> -
        0      end a 1 completed pid=-7      -> -
        0      start a 1                     -> -
        0      end a 1 completed pid=0       -> -
        0      end a 1 completed             -> - +1
    )"},
    {"replayedStartOpensNothing", R"(
        0      start a 1           -> -
        0      end a 1 completed   -> - +1
        1      tick                -> a/1
        1      dismiss             -> -
        2      start a 1           -> -
        2      end a 1 completed   -> -
        3      start a 2           -> -
        3      start a 1           -> -
        3      end a 1 completed   -> -
        3      end a 2 completed   -> - +1
    )"},
    {"startWithoutGenerationClosesTheTurn", R"(
        0      start a 1           -> -
        1      start a -           -> -
        2      end a 1 completed   -> -
        3      start a 2 age=2.5   -> -
        3      end a 2 completed   -> -
        3      start a 2           -> -
        3      end a 2 completed   -> - +1
        4      start b -           -> a/2
        4      start a -           -> -
    )"},
    {"lateStartDisturbsNothing", R"(
        0      start a 1           -> -
        2      start a 2 age=2.5   -> -
        2      start a - age=2.5   -> -
        2      end a 1 completed   -> - +1
        3      start a 3 age=1.5   -> a/1
        4      start a 3 age=2     -> -
    )"},
    {"startOfAnotherAgentIsRefused", R"(
        0      start a 1           -> -
        1      start a 2 agent=x   -> -
        1      end a 2 completed agent=x -> -
        1      end a 1 completed   -> - +1
    )"},
    {"newTurnRemovesWhatTheSessionHas", R"(
        0      start a 1           -> -
        0      start b 1           -> -
        0      end a 1 completed   -> - +1
        0      end b 1 completed   -> - +2
        1      start b 2           -> a/1
        1      start a 2           -> -
        1      end a 2 completed   -> - +1
        1      start a 3           -> -
    )"},
    {"remindersComeOneAtATimeInOrder", R"(
        0      start a 1           -> -
        0      start b 1           -> -
        0      end b 1 completed   -> - +1
        0.5    end a 1 completed   -> - +2
        0.9    tick                -> b/1 +1
        0.9    dismiss             -> - +1
        1.2    tick                -> - +1
        1.3    tick                -> a/1
    )"},
    {"opensOnceByItself", R"(
        0      start a 1           -> -
        0      start b 1           -> -
        0      end a 1 completed   -> - +1
        0      end b 1 completed   -> - +2
        0.5    claim               -> - +2
        0.8    claim-blocked       -> a/1 +1
        0.9    claim               -> opens a/1 seen +1
        1      claim               -> a/1 seen +1
        1      dismiss-stale       -> a/1 seen +1
        1      dismiss             -> - +1
        1      tick                -> b/1
        1      collapse            -> b/1 seen
        1      claim               -> b/1 seen
    )"},
    {"collapseWithoutReminderMarksNone", R"(
        0      collapse            -> -
        0      start a 1           -> -
        0      end a 1 completed   -> - +1
        0      collapse            -> - +1
        1      claim               -> opens a/1 seen
    )"},
    {"clearedRemindersDoNotComeBack", R"(
        0      start a 1           -> -
        0      start b 1           -> -
        0      start c 1           -> -
        0      end a 1 completed   -> - +1
        0      end b 1 completed   -> - +2
        1      claim               -> opens a/1 seen +1
        1      clear               -> -
        1      end a 1 completed   -> -
        1      start a 1           -> -
        1      end a 1 completed   -> -
        1      end c 1 completed   -> - +1
    )"},
    {"switchedOffForgetsEverything", R"(
        0      start a 1                   -> -
        0      end a 1 completed           -> - +1
        1      claim                       -> opens a/1 seen
        1      end x 9 completed disabled  -> -
        1      end a 1 completed           -> -
        1      start a 1                   -> -
        1      end a 1 completed           -> - +1
        1      reset                       -> -
    )"},
    {"clockSetBackDropsWhatItMadeYounger", R"(
        9      start a 1           -> -
        9      end a 1 completed   -> - +1
        10     claim               -> opens a/1 seen
        10     start b 1           -> a/1 seen
        10     end b 1 completed   -> a/1 seen +1
        8      tick                -> -
    )"},
};

INSTANTIATE_TEST_SUITE_P(CompletionReminder, CompletionReminderTrace, testing::ValuesIn(traces),
    [](const auto& test) { return test.param.name; });

} // namespace
} // namespace notch
