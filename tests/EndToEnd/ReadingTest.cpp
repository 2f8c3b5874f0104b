// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "EndToEnd/NotchOnDesktop.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

namespace notch {
namespace {

// What a person reads before the buttons are armed, as the X server has it.
class ReadingTest : public NotchOnDesktop {
protected:
    static constexpr std::uint8_t wheelDown = 5;

    // The colours around the middle of a text that is on the screen.
    std::vector<OtherProgram::Colour> pixels(const AccessibleControl& text, int above, int height)
    {
        std::vector<OtherProgram::Colour> seen;
        for (int y = text.y - above; y < text.y - above + height; ++y)
            for (int x = text.x - 190; x < text.x + 190; ++x)
                seen.push_back(other_.colourAt(x, y));
        return seen;
    }
    bool firstLineIsWritten()
    {
        const auto grey = [](OtherProgram::Colour colour) { return (colour & 0xFF) > 0x80; };
        const auto row = pixels(settled("请求内容"), 52, 46);
        return std::ranges::count_if(row, grey) > 200;
    }
    void scrollDown()
    {
        const auto text = settled("请求内容");
        other_.moveTo(text.x, text.y);
        for (int step = 0; step < 100; ++step) {
            other_.press(wheelDown);
            other_.release(wheelDown);
        }
    }
    static std::string bash(const std::string& command)
    {
        return R"("tool_name":"Bash","tool_input":{"command":")" + command + "\"}";
    }
};

TEST_F(ReadingTest, theNextRequestBeginsAtItsFirstLineHoweverFarTheLastOneWasScrolled)
{
    std::string many;
    for (int line = 0; line < 200; ++line)
        many += "x\\n";
    const auto first = ask(bash(many));
    armed();
    scrollDown();
    click(deny);
    first->finish();
    std::string hidden = "rm -rf ~ # " + std::string(60, 'M');
    for (int line = 0; line < 20; ++line)
        hidden += "\\n";
    const auto second = ask(bash(hidden + "echo done"));
    armed();
    EXPECT_TRUE(firstLineIsWritten());
    scrollDown();
    EXPECT_TRUE(waitUntil([&] { return !firstLineIsWritten(); })) << "it must be able to tell";
}

TEST_F(ReadingTest, toolsOfOneServerLookDifferent)
{
    const auto titleOf = [this](const std::string& tool) {
        const auto hook = ask(R"("tool_name":")" + tool + R"(","tool_input":{})");
        armed();
        const auto title = notch_.waitFor("使用 " + tool);
        EXPECT_TRUE(title) << tool;
        auto seen = pixels(title.value_or(AccessibleControl{}), 20, 40);
        click(deny);
        hook->finish();
        disappears(allow);
        return seen;
    };
    const auto repository = titleOf("mcp__github-enterprise__delete_repository");
    EXPECT_EQ(repository, titleOf("mcp__github-enterprise__delete_repository"));
    EXPECT_NE(repository, titleOf("mcp__github-enterprise__delete_reaction"));
}

// A screen on which a long request is too high.
struct LowScreen {
    const char* monitor; // As xrandr takes its size.
    int height; // In points.
    double scale;
};

class LowScreenTest : public ReadingTest, public testing::WithParamInterface<LowScreen> {
protected:
    void TearDown() override
    {
        ::unsetenv("QT_SCALE_FACTOR");
        if (!IsSkipped()) {
            EXPECT_EQ(std::system("xrandr --delmonitor low"), 0);
        }
    }
};

TEST_P(LowScreenTest, hasTheDecisionAndTheSwitcherOnItWithEveryTextOpen)
{
    const auto& [monitor, height, scale] = GetParam();
    const auto place = std::string("xrandr --setmonitor low ") + monitor + "+0+0 screen";
    ASSERT_EQ(std::system(place.c_str()), 0);
    ::setenv("QT_SCALE_FACTOR", std::to_string(scale).c_str(), 1);
    startResident();
    std::string texts;
    for (int line = 0; line < 50; ++line)
        texts += "x\\n";
    const auto first = ask(bash(texts + R"(","description":")" + texts));
    armed();
    const auto second = ask();
    notch_.act(settled("查看完整参数"));
    settled("返回命令视图");
    const auto button = armed();
    for (const auto* const part :
        {allow, deny, "时间用尽交回 QuillMoss 原流程，不自动允许", "下一条请求"}) {
        const auto shown = notch_.waitFor(part);
        ASSERT_TRUE(shown) << part;
        EXPECT_LT(shown->y, height - 10) << part;
    }
    other_.clickAt(static_cast<int>(button.x * scale), static_cast<int>(button.y * scale));
    expectAnswer(*first, "allow");
}

INSTANTIATE_TEST_SUITE_P(Screens, LowScreenTest,
    testing::Values(LowScreen{"800/200x480/120", 480, 1}, LowScreen{"1280/300x720/170", 480, 1.5}));

} // namespace
} // namespace notch
