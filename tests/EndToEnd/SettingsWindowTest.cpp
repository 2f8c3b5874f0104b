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

// Each change, with what a screen reader speaks of it, leaves the bytes that the command line
// leaves of the same file.
TEST_F(SettingsWindowTest, changesTheFileAsTheCommandLineDoes)
{
    struct Change {
        const char* button;
        const char* answer; // Null: nothing is asked.
        const char* spoken; // Null: there is nothing to speak of.
        std::vector<std::string> sameAs = {};
        std::optional<std::string> file = {}; // What it holds before; as it was left, if absent.
    };
    const std::vector<std::string> install{"--configure", "quillmoss", "--apply"};
    const auto legacy = withOwnEntries(
        R"({"hooks":{"PreToolUse":[{"matcher":"Bash","hooks":[{OWN}]}]}})", PROGRAM_PATH);
    const SettingsFile reference;
    file_.write("{\n  \"theme\" : \"dark\"\n}\n");
    reference.write(file_.text());
    reach("刷新状态");
    notch_.announcement();
    for (const auto& change :
        {
            Change{"安装结束提醒接入…", "接入并开启",
                "已接入并开启结束提醒。请等待接入后新一轮的开始与结束；当前已完成任务不补弹。",
                {"--configure-completion", "--apply"}},
            Change{"移除结束提醒接入…", "移除", "已移除结束提醒接入，审批接入保持不变。",
                {"--configure-completion", "--remove"}},
            Change{"安装接入…", "取消", nullptr},
            Change{"安装接入…", "备份并安装",
                "配置已安装到 QuillMoss。请重启 QuillMoss；尚不代表已收到 Hook。", install},
            Change{"更新接入…", "备份并安装",
                "配置已安装到 QuillMoss。请重启 QuillMoss；尚不代表已收到 Hook。", install, legacy},
            Change{"更新接入…", nullptr, "配置无法读取。已刷新状态，请检查后重试。", {}, "{"},
            Change{"移除接入…", "移除", "本应用接入已移除。请重新启动 QuillMoss。",
                {"--configure", "quillmoss", "--remove"}, legacy},
        }) {
        file_.write(change.file.value_or(file_.text()));
        reference.write(file_.text());
        if (!change.sameAs.empty())
            runProgramAtHome(reference.home(), PROGRAM_PATH, change.sameAs);
        click(change.button);
        if (change.answer)
            click(change.answer);
        if (change.spoken)
            EXPECT_EQ(notch_.announcement(), change.spoken);
        else
            EXPECT_TRUE(disappears(change.answer));
        EXPECT_EQ(file_.text(), reference.text()) << change.button;
        EXPECT_EQ(file_.backups().size(), reference.backups().size()) << change.button;
    }
    const auto opened = openFoldersWithTouch();
    click("在 Finder 显示备份");
    EXPECT_TRUE(waitUntil([&] { return std::filesystem::exists(opened); }));
}

} // namespace
} // namespace notch
