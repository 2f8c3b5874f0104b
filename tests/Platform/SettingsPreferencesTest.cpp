// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Preferences/SettingsPreferences.h"

#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <fstream>

namespace notch {
namespace {

class SettingsPreferencesTest : public testing::Test {
protected:
    QString file() const { return QString::fromStdString(directory_ / "preferences.ini"); }

    TemporaryDirectory directory_;
};

TEST_F(SettingsPreferencesTest, everySwitchKeepsBothValuesForTheNextProcess)
{
    for (const auto preference : allPreferences) {
        EXPECT_EQ(SettingsPreferences(file()).isOn(preference), defaultValue(preference));
        for (const bool on : {!defaultValue(preference), defaultValue(preference)}) {
            SettingsPreferences writer(file());
            writer.set(preference, on);
            EXPECT_EQ(writer.isOn(preference), on) << name(preference);
            EXPECT_EQ(SettingsPreferences(file()).isOn(preference), on) << name(preference);
        }
    }
}

TEST_F(SettingsPreferencesTest, aFileThatSaysNothingClearSwitchesNothing)
{
    for (const char* const text : {"yes", "1", "True", "\"\"", "@ByteArray(x)", "true, true"}) {
        std::ofstream(file().toStdString())
            << "[General]\nnativeApprovalsEnabled=" << text << "\nautoCollapse=" << text << '\n';
        const SettingsPreferences preferences(file());
        EXPECT_FALSE(preferences.isOn(Preference::nativeApprovalsEnabled)) << text;
        EXPECT_TRUE(preferences.isOn(Preference::autoCollapse)) << text;
    }
}

} // namespace
} // namespace notch
