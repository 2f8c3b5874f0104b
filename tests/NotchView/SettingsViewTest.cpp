// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SettingsView/SettingsView.h"
#include "Scene.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

class SettingsViewTest : public testing::Test, protected ShownScene {
protected:
    SettingsView settings{model, &view}; // find() finds what is in it.
};

TEST_F(SettingsViewTest, switchesWriteTheirPreference)
{
    for (const auto preference : {Preference::hoverToExpand, Preference::autoCollapse}) {
        auto& box = button(std::string(name(preference)).c_str());
        EXPECT_TRUE(box.isChecked());
        box.click();
        EXPECT_FALSE(outside.preferences.isOn(preference)) << name(preference);
        model.setPreference(preference, true);
        settings.refresh();
        EXPECT_TRUE(box.isChecked()) << name(preference);
    }
}

TEST_F(SettingsViewTest, tellsHowTheBridgeAndTheEditionsStand)
{
    EXPECT_EQ(text("settings-bridge"), "本地桥接已就绪");
    EXPECT_EQ(text("settings-editions"), "QuillMoss · Hook 已安装");
    play("editions 0");
    settings.refresh();
    EXPECT_EQ(text("settings-editions"), "本应用 Hook：未安装");
}

TEST_F(SettingsViewTest, buttonsAskTheModel)
{
    int quits = 0;
    model.onQuitRequested = [&quits] { ++quits; };
    button("settings-quit").click();
    EXPECT_EQ(quits, 1);
    button("settings-demo").click();
    EXPECT_TRUE(model.state().isDemo);
}

} // namespace
} // namespace notch
