// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Display/ReducedMotion.h"
#include "Platform/Display/Screens.h"
#include "Platform/Display/XSettings.h"

#include "PanelOnDesktop.h"
#include "support/x11/SettingsText.h"

#include <gtest/gtest.h>

#include <span>
#include <string>
#include <vector>

namespace notch {
namespace {

constexpr const char* animations = "Gtk/EnableAnimations";

TEST(XSettings, findsAnIntegerAmongOthers)
{
    struct Row {
        const char* name;
        SettingsText settings;
        std::optional<std::int32_t> found;
    };
    const Row rows[] = {
        {"alone", SettingsText().integer(animations, 0), 0},
        {"after one of each type",
            SettingsText()
                .text("Net/ThemeName", "Adwaita")
                .colour("A")
                .integer("B", 7)
                .integer(animations, 1),
            1},
        {"negative", SettingsText().integer(animations, -5), -5},
        {"a longer name", SettingsText().integer("Gtk/EnableAnimations2", 0), {}},
        {"no integer", SettingsText().text(animations, "0"), {}},
        {"empty", SettingsText(), {}},
    };
    for (const auto& [name, settings, found] : rows)
        EXPECT_EQ(integerSetting(settings.bytes(), animations), found) << name;
}

TEST(XSettings, readsTheOtherByteOrder)
{
    const std::uint8_t bytes[] = {
        1, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 'A', 0, 0, 0, 0, 0, 0, 1, 0, 0, 1, 2};
    EXPECT_EQ(integerSetting(bytes, "A"), 258);
}

TEST(XSettings, damagedBytesSayNothing)
{
    const auto whole =
        SettingsText().text("Net/ThemeName", "Adwaita").integer(animations, 1).bytes();
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_EQ(integerSetting(std::span(whole).first(length), animations), std::nullopt);
    for (std::size_t i = 0; i < whole.size(); ++i) {
        auto spoilt = whole;
        spoilt[i] = 0xFF;
        integerSetting(spoilt, animations); // Reads nothing beyond them.
    }
}

TEST_F(PanelOnDesktop, reducedMotionFollowsTheSettingsDaemon)
{
    launch();
    EXPECT_FALSE(reduceMotion());
    other->publish("_XSETTINGS_SETTINGS", SettingsText().integer(animations, 0).bytes());
    EXPECT_FALSE(reduceMotion()); // Not a daemon yet.
    other->claim("_XSETTINGS_S0");
    EXPECT_TRUE(reduceMotion());
    other->publish("_XSETTINGS_SETTINGS", SettingsText().integer(animations, 1).bytes());
    EXPECT_FALSE(reduceMotion());
}

constexpr OtherProgram::Colour white{255, 255, 255};
constexpr OtherProgram::Colour black{0, 0, 0};

// A second and lower screen to the right of the first is the primary one.
const QStringList lowerRight{QStringLiteral("left 800/200x600/150+0+0 screen"),
    QStringLiteral("*right 480/120x760/190+800+40 none")};

class OnTheSecondScreen : public PanelOnDesktop,
                          public testing::WithParamInterface<const char*> { };

TEST_P(OnTheSecondScreen, panelHangsFromItsTopEdge)
{
    launch(GetParam(), lowerRight);
    other->whitenDesktop();
    const Screens screens([] {});
    ASSERT_EQ(screens.records().size(), 2U);
    const auto screen = screens.records().front();
    const double width = panelMetrics(screen).panelWidth;
    panel->applyFrame(panelFrame(screen, width, 100), width);
    panel->orderFront();
    synchronise();
    const int middle = 800 + 240;
    EXPECT_TRUE(eventually([&] { return other->colourAt(middle, 40) == black; }));
    EXPECT_EQ(other->colourAt(middle, 39), white);
    other->clickAt(middle, 41);
    EXPECT_TRUE(eventually([&] { return content->presses == 1; }));
    const auto pointer = panel->pointerPosition();
    ASSERT_TRUE(pointer);
    EXPECT_TRUE(hitsSurface(*pointer, panel->frame(), width));
}

INSTANTIATE_TEST_SUITE_P(Scales, OnTheSecondScreen, testing::Values("1", "2"),
    [](const auto& scale) { return std::string("at") + scale.param; });

TEST_F(PanelOnDesktop, screensThatComeAndGoAreTold)
{
    launch("1", lowerRight);
    int changes = 0;
    const Screens screens([&] { ++changes; });
    ASSERT_TRUE(PrivateDesktop::run(
        QStringLiteral("xrandr"), {QStringLiteral("--delmonitor"), QStringLiteral("right")}));
    EXPECT_TRUE(eventually([&] { return changes > 0; }));
    const std::vector<ScreenRecord> left{{.frame = {0, 0, 800, 600}}};
    EXPECT_EQ(screens.records(), left);
}

} // namespace
} // namespace notch
