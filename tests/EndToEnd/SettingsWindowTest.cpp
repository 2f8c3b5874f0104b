// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "EndToEnd/NotchOnDesktop.h"
#include "HookConfiguration/HookInstaller.h"
#include "support/PrivateAccount.h"
#include "support/SettingsFile.h"

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

TEST_F(SettingsWindowTest, updatesOverALegacyEntryAfterBeingAskedAndRemovesAgain)
{
    const auto legacy = Json(HookInstaller::approvalCommand(PROGRAM_PATH, "quillmoss")).compact();
    write(R"({"theme":"dark","hooks":{"PreToolUse":[{"matcher":"Bash","hooks":[{"type":"command",)"
          R"("command":)"
          + legacy + R"(,"timeout":60}]}]}})");
    const auto before = clicked_.text();
    reach("刷新状态");
    EXPECT_TRUE(appears("发现旧版逐命令拦截，更新接入将移除它，仅保留真实权限请求。"));
    click("更新接入…");
    click("取消");
    EXPECT_TRUE(disappears("备份并安装"));
    EXPECT_EQ(clicked_.text(), before);
    EXPECT_TRUE(clicked_.backups().empty());
    click("更新接入…");
    click("备份并安装");
    EXPECT_TRUE(appears("本应用 Hook：配置已安装"));
    EXPECT_TRUE(appears("配置已安装到 QuillMoss。请重启 QuillMoss；尚不代表已收到 Hook。"));
    configure({"--configure", "quillmoss", "--apply"});
    expectSameFiles();
    click("移除接入…");
    click("移除");
    EXPECT_TRUE(appears("本应用接入已移除。请重新启动 QuillMoss。"));
    configure({"--configure", "quillmoss", "--remove"});
    expectSameFiles();
}

TEST_F(SettingsWindowTest, asksNothingAboutAFileThatCannotBeRead)
{
    write("{}");
    reach("刷新状态");
    ASSERT_TRUE(appears("本应用 Hook：未安装"));
    clicked_.write("{");
    click("安装接入…");
    EXPECT_TRUE(appears("配置无法读取。已刷新状态，请检查后重试。"));
    EXPECT_TRUE(appears("配置错误 / 无法读取"));
    EXPECT_FALSE(notch_.showing("备份并安装"));
    EXPECT_EQ(clicked_.text(), "{");
    other_.type(OtherProgram::Key::escape);
    EXPECT_TRUE(disappears("把审批带到刘海"));
}

TEST_F(SettingsWindowTest, connectsAndDisconnectsTurnEnds)
{
    write("{}");
    reach("安装结束提醒接入…");
    click("接入并开启");
    EXPECT_TRUE(appears("独立通知 Hook 已安装"));
    configure({"--configure-completion", "--apply"});
    expectSameFiles();
    click("移除结束提醒接入…");
    click("移除");
    EXPECT_TRUE(appears("尚未安装到当前应用位置"));
    configure({"--configure-completion", "--remove"});
    expectSameFiles();
}

} // namespace
} // namespace notch
