// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "EndToEnd/NotchOnDesktop.h"
#include "support/WaitUntil.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace notch {
namespace {

namespace fs = std::filesystem;

// The notch among a person's other windows.
class PersonalDesktopTest : public NotchOnDesktop {
protected:
    static constexpr const char* openNotch = "展开 QuillMoss 刘海";

    void SetUp() override
    {
        NotchOnDesktop::SetUp();
        if (IsSkipped())
            return;
        work_ = other_->openFullScreenWindow();
        ASSERT_TRUE(waitUntil([&] { return other_->focus() == work_; }));
    }

    // What the person works in.
    OtherProgram::Window work_ = 0;
};

TEST_F(PersonalDesktopTest, aRequestTakesNoKeyboard)
{
    const auto hook = ask();
    armed();
    EXPECT_EQ(other_->focus(), work_);
}

TEST_F(PersonalDesktopTest, clicksBesideTheSurfaceReachTheWindowBelow)
{
    const auto button = notch_->waitFor(openNotch);
    ASSERT_TRUE(button);
    // The panel is as wide as the open notch at all times, and 480 points is that.
    other_->clickAt(button->x - 230, button->y);
    EXPECT_TRUE(waitUntil([&] { return other_->takePresses(work_) == 1; }));
    other_->clickAt(button->x, button->y);
    EXPECT_TRUE(appears("收起 QuillMoss 刘海"));
    EXPECT_EQ(other_->takePresses(work_), 0);
}

TEST_F(PersonalDesktopTest, escClosesTheNotchThatWasClickedAndDecidesNothing)
{
    auto hook = ask();
    armed();
    const auto title = notch_->waitFor("有操作需要你确认");
    ASSERT_TRUE(title);
    other_->clickAt(title->x, title->y);
    ASSERT_TRUE(waitUntil([&] { return other_->focus() != work_; }));
    other_->typeEscape();
    EXPECT_TRUE(appears("1 条待确认请求"));
    EXPECT_TRUE(waitUntil([&] { return other_->focus() == work_; }));
    click("1 条待确认请求");
    click(deny);
    EXPECT_TRUE(isAnswer(hook->finish(), "deny"));
}

TEST_F(PersonalDesktopTest, aClickElsewhereClosesAnIdleNotchOnly)
{
    click(openNotch);
    ASSERT_TRUE(appears("收起 QuillMoss 刘海"));
    other_->clickAt(20, 700);
    EXPECT_TRUE(appears(openNotch));
    const auto hook = ask();
    armed();
    other_->clickAt(20, 700);
    EXPECT_TRUE(appears(allow));
}

TEST_F(PersonalDesktopTest, theHostIsStartedAndWhenItRunsBroughtToTheFront)
{
    const fs::path data = std::getenv("XDG_DATA_HOME");
    const auto started = data / "started";
    fs::create_directories(data / "applications");
    std::ofstream(data / "applications/quillmoss.desktop")
        << "[Desktop "
           "Entry]\nType=Application\nName=QuillMoss\nStartupWMClass=HostWindow\nExec=touch "
        << started.string() << '\n';
    startResident();
    const auto hook = ask();
    armed();
    click("去 QuillMoss 处理 ↗");
    EXPECT_TRUE(waitUntil([&] { return fs::exists(started); }));

    fs::remove(started);
    const auto host = other_->openWindow({100, 500, 300, 200}, "hostwindow");
    other_->activate(work_);
    ASSERT_TRUE(waitUntil([&] { return other_->focus() == work_; }));
    click("去 QuillMoss 处理 ↗");
    EXPECT_TRUE(waitUntil([&] { return other_->focus() == host; }));
    EXPECT_FALSE(fs::exists(started));
}

} // namespace
} // namespace notch
