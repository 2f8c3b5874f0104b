// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "EndToEnd/NotchOnDesktop.h"
#include "support/PrivateAccount.h"
#include "support/SettingsFile.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace notch {
namespace {

// The settings window with a home of its own.
class SettingsWindowTest : public NotchOnDesktop {
protected:
    void SetUp() override
    {
        if (!canWrapAccount())
            GTEST_SKIP() << "no wrapper of the account database";
        NotchOnDesktop::SetUp();
        if (IsSkipped())
            return;
        resident_.reset();
        resident_ = std::make_unique<ChildProcess>(
            PrivateAccount::launcher, account_.command(PROGRAM_PATH));
        click(openNotch);
        click("接入与交互设置");
        ASSERT_TRUE(appears("把审批带到刘海"));
    }

    // Of the settings' scrolling content, wherever it is.
    void reach(const std::string& control)
    {
        const auto window = settled("退出 QuillMoss Notch");
        const auto top = settled("演示刘海");
        other_.moveTo(top.x - 200, window.y - 200);
        const bool reached = waitUntil([&] {
            const auto now = notch_.showing(control);
            if (!now || now->y > window.y - 80) {
                other_.press(5);
                other_.release(5);
            }
            return now && now->y <= window.y - 80;
        });
        ASSERT_TRUE(reached) << control;
        click(control);
    }
    // A desktop where folders are opened by a program that leaves this file; its path.
    static std::filesystem::path openFoldersWithTouch()
    {
        const std::filesystem::path data = std::getenv("XDG_DATA_HOME");
        const auto opened = data / "folder-opened";
        std::filesystem::create_directories(data / "applications");
        std::ofstream(data / "applications/folders.desktop")
            << "[Desktop Entry]\nType=Application\nName=Folders\nMimeType=inode/directory;\n"
            << "Exec=touch " << opened.string() << '\n';
        std::ofstream(std::filesystem::path(std::getenv("XDG_CONFIG_HOME")) / "mimeapps.list")
            << "[Default Applications]\ninode/directory=folders.desktop\n";
        return opened;
    }
    const SettingsFile file_;
    const PrivateAccount account_{file_.home()};
};

// What the window tells after a change, it reads from the file that the program finds in its
// account's home.
TEST_F(SettingsWindowTest, changesTheFileWhenThePersonConfirms)
{
    struct Change {
        const char* button;
        const char* confirm;
        const char* told;
        const char* spoken;
    };
    const std::string theme = "{\n  \"theme\" : \"dark\"\n}\n";
    file_.write(theme);
    reach("刷新状态");
    std::size_t changes = 0;
    notch_.announcement();
    for (const auto& change : {
             Change{"安装结束提醒接入…", "接入并开启", "独立通知 Hook 已安装",
                 "已接入并开启结束提醒。请等待接入后新一轮的开始与结束；当前已完成任务不补弹。"},
             Change{"移除结束提醒接入…", "移除", "尚未安装到当前应用位置",
                 "已移除结束提醒接入，审批接入保持不变。"},
             Change{"安装接入…", "备份并安装", "本应用 Hook：配置已安装",
                 "配置已安装到 QuillMoss。请重启 QuillMoss；尚不代表已收到 Hook。"},
             Change{"移除接入…", "移除", "本应用 Hook：未安装",
                 "本应用接入已移除。请重新启动 QuillMoss。"},
         }) {
        click(change.button);
        click(change.confirm);
        EXPECT_EQ(notch_.announcement(), change.spoken);
        EXPECT_TRUE(appears(change.told));
        EXPECT_EQ(file_.backups().size(), ++changes);
    }
    EXPECT_EQ(file_.text(), theme);
    const auto opened = openFoldersWithTouch();
    click("在 Finder 显示备份");
    EXPECT_TRUE(waitUntil([&] { return std::filesystem::exists(opened); }));
}

} // namespace
} // namespace notch
