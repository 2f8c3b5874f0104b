// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "EndToEnd/NotchOnDesktop.h"
#include "HookConfiguration/HookInstaller.h"
#include "support/PrivateAccount.h"
#include "support/SettingsFile.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace notch {
namespace {

// The settings window with a home of its own, and beside it the same file in another home, which
// the command line changes.
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

    void write(const std::string& text)
    {
        clicked_.write(text);
        typed_.write(text);
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
    void configure(const std::vector<std::string>& arguments)
    {
        EXPECT_EQ(runProgramAtHome(typed_.home(), PROGRAM_PATH, arguments).status, 0);
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
    // Byte for byte, with a backup for each change.
    void expectSameFiles()
    {
        EXPECT_TRUE(waitUntil([&] { return clicked_.text() == typed_.text(); }))
            << clicked_.text() << typed_.text();
        EXPECT_TRUE(
            waitUntil([&] { return clicked_.backups().size() == typed_.backups().size(); }));
    }

    const SettingsFile clicked_;
    const SettingsFile typed_;
    const PrivateAccount account_{clicked_.home()};
};

TEST_F(SettingsWindowTest, changesTheFileAsTheCommandLineDoesWhenThePersonConfirms)
{
    struct Change {
        const char* button;
        const char* confirm;
        const char* told;
        std::vector<std::string> commandLine;
    };
    const auto legacy = Json(HookInstaller::approvalCommand(PROGRAM_PATH, "quillmoss")).compact();
    write(R"({"theme":"dark","hooks":{"PreToolUse":[{"matcher":"Bash","hooks":[{"type":"command",)"
          R"("command":)"
          + legacy + R"(,"timeout":60}]}]}})");
    const auto before = clicked_.text();
    reach("刷新状态");
    click("更新接入…");
    click("取消");
    EXPECT_TRUE(disappears("备份并安装"));
    EXPECT_TRUE(clicked_.text() == before && clicked_.backups().empty());
    for (const auto& change : {
             Change{"安装结束提醒接入…", "接入并开启", "独立通知 Hook 已安装",
                 {"--configure-completion", "--apply"}},
             Change{"移除结束提醒接入…", "移除", "尚未安装到当前应用位置",
                 {"--configure-completion", "--remove"}},
             Change{"更新接入…", "备份并安装", "本应用 Hook：配置已安装",
                 {"--configure", "quillmoss", "--apply"}},
             Change{"移除接入…", "移除", "本应用 Hook：未安装",
                 {"--configure", "quillmoss", "--remove"}},
         }) {
        click(change.button);
        click(change.confirm);
        EXPECT_TRUE(appears(change.told));
        configure(change.commandLine);
        expectSameFiles();
    }
    const auto opened = openFoldersWithTouch();
    click("在 Finder 显示备份");
    EXPECT_TRUE(waitUntil([&] { return std::filesystem::exists(opened); }));
}

TEST_F(SettingsWindowTest, asksNothingAboutAFileThatCannotBeRead)
{
    write("{}");
    reach("刷新状态");
    ASSERT_TRUE(appears("本应用 Hook：未安装"));
    clicked_.write("{");
    click("安装接入…");
    EXPECT_TRUE(appears("配置无法读取。已刷新状态，请检查后重试。"));
    EXPECT_FALSE(notch_.showing("备份并安装"));
    EXPECT_EQ(clicked_.text(), "{");
    other_.type(OtherProgram::Key::escape);
    EXPECT_TRUE(disappears("把审批带到刘海"));
}

} // namespace
} // namespace notch
