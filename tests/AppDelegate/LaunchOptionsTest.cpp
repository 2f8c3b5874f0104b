// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppDelegate/LaunchOptions.h"

#include "support/FakePreferences.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace notch {
namespace {

TEST(LaunchOptionsTest, eachFlagCountsWhereverItStands)
{
    const struct {
        std::vector<std::string> arguments;
        LaunchOptions options;
    } rows[] = {
        {{}, {}},
        {{"--demo"}, {.demo = true}},
        {{"x", "--enable-native-approvals", "--demo"},
            {.enableNativeApprovals = true, .demo = true}},
        {{"--enable-completion-reminders"}, {.enableCompletionReminders = true}},
        {{"--demo=1", "-demo", "demo", "--Demo"}, {}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(LaunchOptions::parse(row.arguments), row.options);
}

TEST(LaunchOptionsTest, aStartSwitchesOnWhatItWasAskedForAndNothingOff)
{
    FakePreferences preferences;
    preferences.set(Preference::completionRemindersEnabled, true);
    LaunchOptions{.enableNativeApprovals = true}.storeIn(preferences);
    EXPECT_TRUE(preferences.isOn(Preference::nativeApprovalsEnabled));
    EXPECT_TRUE(preferences.isOn(Preference::completionRemindersEnabled));
    FakePreferences untouched;
    LaunchOptions{.demo = true}.storeIn(untouched);
    for (const auto preference : allPreferences)
        EXPECT_EQ(untouched.isOn(preference), defaultValue(preference));
}

} // namespace
} // namespace notch
