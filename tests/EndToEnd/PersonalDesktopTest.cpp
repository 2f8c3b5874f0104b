// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "EndToEnd/NotchOnDesktop.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace notch {
namespace {

namespace fs = std::filesystem;

// The notch among a person's other windows.
class PersonalDesktopTest : public NotchOnDesktop {
protected:
    void SetUp() override
    {
        NotchOnDesktop::SetUp();
        work_ = other_.openFullScreenWindow();
        ASSERT_TRUE(IsSkipped() || hasFocus(work_));
    }
    bool hasFocus(OtherProgram::Window window)
    {
        return waitUntil([&] { return other_.focus() == window; });
    }

    // What the person works in.
    OtherProgram::Window work_ = 0;
};

TEST_F(PersonalDesktopTest, clicksBesideTheSurfaceReachTheWindowBelowAndCloseAnIdleNotchOnly)
{
    const auto button = settled(openNotch);
    // Where the open notch, of 480 points, would have it.
    other_.clickAt(button.x - 230, button.y);
    EXPECT_TRUE(waitUntil([&] { return other_.takePresses() == 1; }));
    other_.clickAt(button.x, button.y);
    ASSERT_TRUE(appears(closeNotch));
    EXPECT_EQ(other_.takePresses(), 0);
    other_.clickAt(20, 700);
    EXPECT_TRUE(appears(openNotch));
    const auto hook = ask();
    armed();
    other_.clickAt(20, 700);
    EXPECT_TRUE(appears(allow));
}

TEST_F(PersonalDesktopTest, aRequestTakesNoKeyboardAndEscClosesTheClickedNotchAndDecidesNothing)
{
    const auto hook = ask();
    armed();
    click("查看完整参数");
    ASSERT_TRUE(appears("返回命令视图"));
    EXPECT_EQ(other_.focus(), work_) << "a click on a button";
    click("有操作需要你确认");
    ASSERT_TRUE(waitUntil([&] { return other_.focus() != work_; }));
    click("返回命令视图");
    EXPECT_TRUE(hasFocus(work_)) << "after a click on a button";
    click("有操作需要你确认");
    ASSERT_TRUE(waitUntil([&] { return other_.focus() != work_; }));
    other_.type(OtherProgram::Key::escape);
    EXPECT_TRUE(appears("1 条待确认请求"));
    EXPECT_TRUE(hasFocus(work_));
    click("1 条待确认请求");
    click(deny);
    expectAnswer(*hook, "deny");
}

TEST_F(PersonalDesktopTest, aRequestThatOtherWindowsCoverComesToTheFrontBeforeAndAfter)
{
    other_.openAbove({0, 0, 1280, 800});
    const auto hook = ask();
    armed();
    other_.takePresses();
    click("查看完整参数");
    ASSERT_TRUE(appears("返回命令视图")) << "covered when it came";
    other_.openAbove({0, 0, 1280, 800});
    click("返回命令视图");
    ASSERT_TRUE(appears("查看完整参数")) << "covered while it waits";
    other_.openFullScreenWindow();
    click(deny);
    expectAnswer(*hook, "deny");
    EXPECT_EQ(other_.takePresses(), 0);
}

TEST_F(PersonalDesktopTest, isAsLargeAsTheSettingsDaemonOrTheToolkitsResourceSays)
{
    const auto showsAs = [](const std::string& size) {
        const auto look = "xwininfo -root -tree | grep -q 'QuillMoss Notch.* " + size + "+'";
        return waitUntil([&] { return std::system(look.c_str()) == 0; });
    };
    EXPECT_TRUE(showsAs("236x32"));
    other_.publish("_XSETTINGS_SETTINGS", // One integer, and 2.
        std::string("\0\0\0\0\1\0\0\0\1\0\0\0\0\0\x17\0Gdk/WindowScalingFactor\0"
                    "\1\0\0\0\2\0\0\0",
            48));
    other_.claim("_XSETTINGS_S0");
    startResident();
    EXPECT_TRUE(showsAs("472x64"));
    ASSERT_EQ(std::system("echo Xft.dpi: 96 | xrdb -merge"), 0);
    startResident();
    EXPECT_TRUE(showsAs("236x32"));
    EXPECT_EQ(std::system("xrdb -remove"), 0);
}

TEST_F(PersonalDesktopTest, theHostIsStartedAndWhenItRunsBroughtToTheFront)
{
    const fs::path data = std::getenv("XDG_DATA_HOME");
    const auto started = data / "started";
    fs::create_directories(data / "applications");
    std::ofstream(data / "applications/quillmoss.desktop")
        << "[Desktop Entry]\nType=Application\nName=QuillMoss\nStartupWMClass=HostWindow\n"
        << "Exec=touch " << started.string() << '\n';
    startResident();
    const auto hook = ask();
    armed();
    click("去 QuillMoss 处理 ↗");
    EXPECT_TRUE(waitUntil([&] { return fs::exists(started); }));
    fs::remove(started);
    const auto host = other_.openWindow("hostwindow");
    ASSERT_TRUE(hasFocus(host));
    ASSERT_TRUE(hasFocus(other_.openFullScreenWindow()));
    click("去 QuillMoss 处理 ↗");
    EXPECT_TRUE(hasFocus(host));
    EXPECT_FALSE(fs::exists(started));
}

// As a native window of a Wayland session is to the window manager.
TEST_F(PersonalDesktopTest, aHostThatOnlyTheBusKnowsIsAskedForItsWindowAndStartedIfItGivesNone)
{
    const fs::path data = std::getenv("XDG_DATA_HOME");
    const auto started = data / "started", activated = data / "activated";
    fs::create_directories(data / "applications");
    fs::create_directories(data / "dbus-1/services");
    fs::remove(data / "applications/quillmoss.desktop");
    std::ofstream(data / "applications/com.example.quillmoss.desktop")
        << "[Desktop Entry]\nType=Application\nName=QuillMoss\nDBusActivatable=true\n"
        << "Exec=touch " << started.string() << '\n';
    std::ofstream(data / "host.py")
        << "import sys\nfrom gi.repository import Gio, GLib\n"
        << "host = Gio.Application(application_id='com.example.quillmoss',"
        << " flags=Gio.ApplicationFlags.IS_SERVICE)\n"
        << "host.connect('activate', lambda *_:"
        << " (open(sys.argv[1], 'w'), GLib.timeout_add(100, host.quit)))\nhost.run()\n";
    const auto service = [&](const std::string& command) {
        std::ofstream(data / "dbus-1/services/com.example.quillmoss.service")
            << "[D-BUS Service]\nName=com.example.quillmoss\nExec=" << command << '\n';
        return std::system("dbus-send --session --print-reply --dest=org.freedesktop.DBus"
                           " / org.freedesktop.DBus.ReloadConfig > /dev/null");
    };
    startResident();
    const auto hook = ask();
    armed();
    ASSERT_EQ(
        service("/usr/bin/python3 " + (data / "host.py").string() + ' ' + activated.string()), 0);
    click("去 QuillMoss 处理 ↗");
    EXPECT_TRUE(waitUntil([&] { return fs::exists(activated); }));
    EXPECT_FALSE(fs::exists(started));
    ASSERT_EQ(service("/bin/false"), 0);
    ASSERT_TRUE(waitUntil([] {
        return std::system("dbus-send --session --print-reply --dest=org.freedesktop.DBus /"
                           " org.freedesktop.DBus.ListNames | grep -q com.example")
            != 0;
    }));
    click("去 QuillMoss 处理 ↗");
    EXPECT_TRUE(waitUntil([&] { return fs::exists(started); }));
}

} // namespace
} // namespace notch
