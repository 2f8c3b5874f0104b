// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppModel/AppModelTest.h"

namespace notch {
namespace {

TEST(AppModelDelays, endNeitherEarlyNorLate)
{
    const struct {
        const char* begin;
        double seconds;
        const char* during;
        const char* over;
    } rows[] = {
        {"ask A", 0.46, "open [A]", "open [A] armed"},
        {"open, wait 1, ask A", 0.46, "open [A]", "open [A] armed"},
        {"ask A, wait 1, close, open", 0.46, "open [A]", "open [A] armed"},
        {"ask A, wait 1, open", 0.01, "open [A]", "open [A] armed"},
        {"ask A, ask B, wait 1, select B", 0.46, "open A [B]", "open A [B] armed"},
        {"ask A, ask B, wait 1, deny A, wait 1.05, dismiss", 0.46, "open [B]", "open [B] armed"},
        // From what is later: the model's own guard, or the sight of the request in this form.
        {"watched, ask A, frame", 0.46, "open [A]", "open [A] armed"},
        {"watched, ask A, wait 3, frame", 0.45, "open [A]", "open [A] armed"},
        {"watched, ask A, wait 3, frame, wait 0.3, frame", 0.15, "open [A]", "open [A] armed"},
        {"watched, ask A, frame, wait 1, blank, frame", 0.45, "open [A]", "open [A] armed"},
        {"watched, ask A, frame, wait 1, move", 0.45, "open [A]", "open [A] armed"},
        {"watched, ask A, wait 3, frame, wait 0.2, quietly blank, wait 0.3, frame", 0.45,
            "open [A]", "open [A] armed"},
        {"watched, ask A, frame, wait 1, details, frame", 0.45, "open [A] details",
            "open [A] armed details"},
        {"watched, ask A, ask B, frame, wait 1, switch 1, wait 1, frame", 0.45, "open A [B]",
            "open A [B] armed"},
        {"watched, ask A, frame, wait 1, close, open", 0.46, "open [A]", "open [A] armed"},
        {"watched, demo hook, wait 3, frame", 0.45, "open [demo] trying",
            "open [demo] armed trying"},
        {"enter", 0.22, "closed inside", "open inside"},
        {"open, enter, leave", 0.7, "open", "closed"},
        {"ask A, ask B, wait 1, deny A", 1.1, "open [B] receipt denied", "open [B]"},
        {"ask A, wait 1, deny A", 1.8, "open receipt denied", "open"},
        // The first receipt's end falls into the second.
        {"ask A, ask B, wait 1, deny A, dismiss, wait 0.5, deny B", 1.8, "open receipt denied",
            "open"},
        {"ask A, wait 1, deny A, dismiss", 0.15, "open", "closed"},
        {"ask A, wait 1, copy", 1.5, "open [A] armed copied A", "open [A] armed"},
        {"ask A, wait 1, copy, wait 1, copy", 1.5, "open [A] armed copied A", "open [A] armed"},
    };
    for (const auto& row : rows) {
        StartedModel model;
        model.play(row.begin);
        model.fakes.calls.clear();
        EXPECT_EQ(model.after(""), row.during) << row.begin;
        model.fakes.time.advance(Seconds{row.seconds - 0.001});
        EXPECT_EQ(model.after(""), row.during) << row.begin;
        model.fakes.time.advance(Seconds{0.002});
        EXPECT_EQ(model.after(""), row.over) << row.begin;
    }
}

// Only a wall clock that is set back can make a guard so long.
TEST(AppModelDelays, startNoTimerForAGuardOfTenSeconds)
{
    expectEach("ask A, clock ..., open, wait 20", R"(-9.5 | open [A] armed
-9.6 | open [A]
)");
}

TEST(AppModelDelays, leaveADemonstrationWaitingForAnHour)
{
    expectEach("demo hook, wait ..., press demo, pressed", R"(3599.9 | yes  open [demo] armed trying
3600   | no  open [demo] armed trying
)");
}

} // namespace
} // namespace notch
