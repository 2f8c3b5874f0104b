// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Display/ReducedMotion.h"
#include "Platform/Display/Screens.h"
#include "Platform/Display/XSettings.h"

#include "PanelOnDesktop.h"

#include <cstdlib>
#include <string>
#include <vector>

namespace notch {
namespace {

using namespace std::string_literals;

const std::string animations = "Gtk/EnableAnimations";

// One setting of an XSETTINGS property: type 0 is an integer, 1 a text, 2 a colour.
std::string setting(char type, const std::string& name, const std::string& value)
{
    std::string bytes = type + "\0"s + static_cast<char>(name.size()) + "\0"s + name;
    bytes.resize((bytes.size() + 3) / 4 * 4);
    return bytes + "\1\0\0\0"s + value;
}

// The property, little-endian, as a settings daemon would publish it.
std::string property(char count, const std::string& settings)
{
    return "\0\0\0\0\1\0\0\0"s + count + "\0\0\0"s + settings;
}

std::optional<std::int32_t> integer(std::string_view bytes, const std::string& name = animations)
{
    // A block of its own size, so that a sanitizer sees what is read beyond it.
    return integerSetting(std::vector<std::uint8_t>(bytes.begin(), bytes.end()), name);
}

const auto theme = setting(1, "Net/ThemeName", "\7\0\0\0Adwaita\0"s);
const auto on = setting(0, animations, "\1\0\0\0"s);

TEST(XSettings, findsAnIntegerAmongOthers)
{
    const auto colour = setting(2, "A", "\0\0\0\0\0\0\0\0"s);
    const struct {
        const char* name;
        std::string bytes;
        std::optional<std::int32_t> found;
    } rows[] = {
        {"after one of each type", property(4, theme + colour + setting(0, "B", "\7\0\0\0"s) + on),
            1},
        {"negative", property(1, setting(0, animations, "\xFB\xFF\xFF\xFF")), -5},
        {"a longer name", property(1, setting(0, animations + "2", "\0\0\0\0"s)), {}},
        {"no integer", property(1, setting(1, animations, "\1\0\0\0001\0\0\0"s)), {}},
        {"more than are counted", property(1, theme + on), {}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(integer(row.bytes), row.found) << row.name;
    const auto otherByteOrder = "\1\0\0\0\0\0\0\1\0\0\0\1\0\0\0\1A\0\0\0\0\0\0\1\0\0\1\2"s;
    EXPECT_EQ(integer(otherByteOrder, "A"), 258);
}

TEST(XSettings, damagedBytesSayNothing)
{
    const auto whole = property(2, theme + on);
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_EQ(integer(std::string_view(whole).substr(0, length)), std::nullopt);
    for (std::size_t i = 0; i < whole.size(); ++i) {
        auto spoilt = whole;
        spoilt[i] = '\xFF';
        integer(spoilt); // Reads nothing beyond them.
    }
}

TEST_F(PanelOnDesktop, reducedMotionFollowsTheSettingsDaemon)
{
    launch();
    EXPECT_FALSE(reduceMotion());
    other.publish("_XSETTINGS_SETTINGS", property(1, setting(0, animations, "\0\0\0\0"s)));
    EXPECT_FALSE(reduceMotion()); // The window is no daemon's yet.
    other.claim("_XSETTINGS_S0");
    EXPECT_TRUE(reduceMotion());
    other.publish("_XSETTINGS_SETTINGS", property(1, on));
    EXPECT_FALSE(reduceMotion());
}

class OnTheSecondScreen : public PanelOnDesktop, public testing::WithParamInterface<int> { };

TEST_P(OnTheSecondScreen, panelHangsFromItsTopEdgeUntilItGoes)
{
    // Lower and to the right of the first, it is the primary one.
    ASSERT_EQ(std::system("xrandr --setmonitor left 800/200x600/150+0+0 screen &&"
                          "xrandr --setmonitor '*right' 480/120x760/190+800+40 none"),
        0);
    launch(GetParam());
    int changes = 0;
    const Screens screens([&] { ++changes; });
    ASSERT_EQ(screens.records().size(), 2U);
    const auto screen = screens.records().front();
    const double width = panelMetrics(screen).panelWidth;
    show(panelFrame(screen, width, 100), width);
    const int middle = 800 + 240;
    EXPECT_TRUE(eventually([&] { return other.colourAt(middle, 40) == OtherProgram::black; }));
    EXPECT_EQ(other.colourAt(middle, 39), OtherProgram::white);
    other.clickAt(middle, 41);
    EXPECT_TRUE(isPressed());
    EXPECT_TRUE(hitsSurface(panel->pointerPosition().value(), panel->frame(), width));

    ASSERT_EQ(std::system("xrandr --delmonitor right"), 0);
    EXPECT_TRUE(eventually([&] { return changes > 0; }));
    const Rect left{0, 0, 800.0 / GetParam(), 600.0 / GetParam()};
    EXPECT_EQ(screens.records(), std::vector{ScreenRecord{.frame = left}});
}

INSTANTIATE_TEST_SUITE_P(Scales, OnTheSecondScreen, testing::Values(1, 2));

} // namespace
} // namespace notch
