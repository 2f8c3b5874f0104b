// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SettingsView/SettingsView.h"
#include "WidgetTest.h"

namespace notch {
namespace {

class SettingsViewTest : public WidgetTest {
protected:
    SettingsView settings{model, outside.preferences};

    QAbstractButton& control(const char* name) const
    {
        return *settings.findChild<QAbstractButton*>(QLatin1String(name));
    }
    std::string words(const char* name) const
    {
        return settings.findChild<QWidget*>(QLatin1String(name))
            ->property("text")
            .toString()
            .toStdString();
    }
};

TEST_F(SettingsViewTest, switchesWriteTheirPreference)
{
    for (const auto preference : {Preference::hoverToExpand, Preference::autoCollapse}) {
        auto& box = control(std::string(name(preference)).c_str());
        EXPECT_TRUE(box.isChecked());
        box.click();
        EXPECT_FALSE(outside.preferences.isOn(preference)) << name(preference);
        outside.preferences.set(preference, true);
        settings.refresh();
        EXPECT_TRUE(box.isChecked()) << name(preference);
    }
}

TEST_F(SettingsViewTest, tellsHowTheBridgeAndTheEditionsStand)
{
    EXPECT_EQ(words("settings-bridge"), "本地桥接已就绪");
    EXPECT_EQ(words("settings-editions"), "QuillMoss · Hook 已安装");
    outside.profiles->clear();
    model.refreshConfiguredProfiles();
    settings.refresh();
    EXPECT_EQ(words("settings-editions"), "本应用 Hook：未安装");
}

TEST_F(SettingsViewTest, buttonsAskTheModel)
{
    int quits = 0;
    model.onQuitRequested = [&quits] { ++quits; };
    control("settings-quit").click();
    EXPECT_EQ(quits, 1);
    control("settings-demo").click();
    EXPECT_TRUE(model.state().isDemo);
}

} // namespace
} // namespace notch
