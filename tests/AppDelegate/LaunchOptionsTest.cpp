// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppDelegate/LaunchOptions.h"

#include "Rehearsal/FakeDependencies.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

TEST(LaunchOptionsTest, eachFlagCountsWhereverItStands)
{
    const std::pair<std::vector<std::string>, LaunchOptions> rows[] = {
        {{"--demo=1", "-demo", "demo", "--Demo"}, {}},
        {{"x", "--enable-native-approvals", "--demo"},
            {.enableNativeApprovals = true, .demo = true}},
        {{"--enable-completion-reminders"}, {.enableCompletionReminders = true}},
    };
    for (const auto& [arguments, options] : rows)
        EXPECT_EQ(LaunchOptions::parse(arguments), options);
}

TEST(LaunchOptionsTest, aStartSwitchesOnWhatItWasAskedForAndNothingOff)
{
    using Written = std::map<Preference, bool>;
    FakePreferences preferences;
    LaunchOptions{.demo = true}.storeIn(preferences);
    EXPECT_EQ(preferences.written, Written{});
    LaunchOptions{.enableNativeApprovals = true}.storeIn(preferences);
    LaunchOptions{.enableCompletionReminders = true}.storeIn(preferences);
    EXPECT_EQ(preferences.written, (Written{{Preference::nativeApprovalsEnabled, true},
                                       {Preference::completionRemindersEnabled, true}}));
}

} // namespace
} // namespace notch
