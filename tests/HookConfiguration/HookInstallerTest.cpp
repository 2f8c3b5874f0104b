// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "HookConfiguration/HookInstaller.h"
#include "support/OrdinaryUser.h"
#include "support/SettingsFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace notch {
namespace {

using InterceptBash = HookInstaller::InterceptBash;
using Variant = HookInstaller::CompletionVariant;

constexpr const char* notJson = "配置必须是合法 JSON 对象；未修改文件。";

constexpr auto edited = "结束提醒 Hook 的选项已被修改，请先手动核对；未覆盖配置。";

// Whether the turn-end hooks are there: "yes", "no", or why it cannot be told.
std::string isInstalled(const std::string& url, Variant variant = Variant::normal)
{
    bool present = false;
    const auto why = failureOf(
        [&] { present = HookInstaller().completionInstalled(url, ownExecutable, variant); });
    return !why.empty() ? why : present ? "yes" : "no";
}

TEST(HookInstaller, makesAMissingFileWithItsDirectoryAndWholeModesUnderAnyUmask)
{
    const OrdinaryUser user;
    for (const mode_t mask : {0000, 0177, 0277, 0477}) {
        const TemporaryDirectory home;
        const auto directory = home / ".quillmoss";
        const auto usual = ::umask(mask);
        const auto backup = installOwn(directory + "/settings.json");
        ::umask(usual);
        EXPECT_EQ(SettingsFile::textOf(backup), "{}\n");
        for (const auto& [path, mode] : {
                 std::pair{directory, 0700},
                 std::pair{directory + "/settings.json", 0600},
                 std::pair{directory + "/.quillmoss-notch-v1.lock", 0600},
                 std::pair{directory + "/.quillmoss-notch-backups", 0700},
                 std::pair{backup, 0600},
             })
            EXPECT_EQ(static_cast<int>(std::filesystem::status(path).permissions()), mode) << path;
    }
}

TEST(HookInstaller, refusesSettingsTheHostMightNotUnderstand)
{
    struct Row {
        const char* text;
        const char* message;
    };
    constexpr auto badEvent = "Hook 事件必须包含分组数组。";
    constexpr auto badGroup = "Hook 分组必须包含 hooks 数组。";
    constexpr auto badType = "Hook type 必须是字符串。";
    constexpr auto badTimeout = "Hook timeout 必须是数字。";
    for (const auto& row : {
             Row{"", notJson},
             Row{"[]", notJson},
             Row{"{} // x", notJson},
             Row{R"({"hooks":[]})", "hooks 必须是 JSON 对象。"},
             Row{R"({"hooks":{"Stop":{}}})", badEvent},
             Row{R"({"hooks":{"Stop":[{"matcher":1},1]}})", badEvent},
             Row{R"({"hooks":{"Stop":[{"matcher":1}]}})", "Hook matcher 必须是字符串。"},
             Row{R"({"hooks":{"Stop":[{}]}})", badGroup},
             Row{R"({"hooks":{"Stop":[{"hooks":[{},1]}]}})", badGroup},
             Row{R"({"hooks":{"Stop":[{"hooks":[{}]}]}})", badType},
             Row{R"({"hooks":{"Stop":[{"hooks":[{"type":""}]}]}})", badType},
             Row{R"({"hooks":{"Stop":[{"hooks":[{"type":"command","command":1}]}]}})",
                 "Command hook 缺少字符串 command。"},
             Row{R"({"hooks":{"Stop":[{"hooks":[{"type":"http","url":1}]}]}})",
                 "HTTP hook 缺少字符串 url。"},
             Row{R"({"hooks":{"Stop":[{"hooks":[{"type":"x","timeout":"60"}]}]}})", badTimeout},
             Row{R"({"hooks":{"Stop":[{"hooks":[{"type":"x","timeout":null}]}]}})", badTimeout},
             Row{R"({"hooks":{"Stop":[{"hooks":[{"type":"x","timeout":true}]}]}})", ""},
         }) {
        const SettingsFile settings(row.text);
        EXPECT_EQ(failureOf([&] { uninstallOwn(settings.url()); }), row.message) << row.text;
        EXPECT_EQ(settings.text(), row.text);
    }
}

TEST(HookInstaller, findsTurnEndHooksOnlyAsItWouldWriteThem)
{
    struct Row {
        const char* name;
        const char* startHooks;
        const char* endGroups;
        std::string answer;
        Variant variant = Variant::normal;
    };
    constexpr auto own = R"({"hooks":[{TURN}]})";
    for (const auto& row : {
             Row{"as written", "{TURN}", own, "yes"},
             Row{"among others", R"({"type":"x"},{TURN})", R"({"hooks":[]},{"hooks":[{TURN}]})",
                 "yes"},
             Row{"in one event only", R"({"type":"x"})", own, "no"},
             Row{"twice in one event", "{TURN},{TURN}", own, "no"},
             Row{"beside the other variant", "{TURN}", R"({"hooks":[{TURN},{TURN_PROBE}]})", "no"},
             Row{"from another path", "{TURN_MOVED}", own, "no"},
             Row{"as asked for, for both", "{TURN_PROBE}", R"({"hooks":[{TURN_PROBE}]})", "yes",
                 Variant::probe},
             Row{"edited by hand", "{TURN}", R"({"hooks":[{TURN}],"matcher":"*"})", edited},
         }) {
        const auto text = withOwnEntries(R"({"hooks":{"UserPromptSubmit":[{"hooks":[)"
                                         + std::string(row.startHooks) + R"(]}],"FinalStop":[)"
                                         + row.endGroups + "]}}");
        const SettingsFile settings(text);
        EXPECT_EQ(isInstalled(settings.url(), row.variant), row.answer) << row.name;
        EXPECT_EQ(settings.text(), text) << row.name;
        EXPECT_TRUE(settings.backups().empty()) << row.name;
    }
}

TEST(HookInstaller, findsAndRemovesNothingWhereThereIsNoFile)
{
    const SettingsFile settings;
    for (const auto& url : {settings.url(), settings.directory() + "/none/settings.json"}) {
        EXPECT_EQ(isInstalled(url), "no");
        EXPECT_EQ(failureOf([&] { uninstallOwn(url); }), "配置文件不存在；没有可卸载的 hook。");
        EXPECT_EQ(failureOf([&] { HookInstaller().uninstallCompletion(url); }), "配置文件不存在。");
    }
    EXPECT_TRUE(settings.leftovers().empty() && settings.backups().empty());
}

TEST(HookInstaller, previewsWithoutShowingOrTouchingTheFile)
{
    const auto preview = [](const std::string& url) {
        return HookInstaller().preview(url, ownExecutable, "quillmoss", InterceptBash::no);
    };
    const SettingsFile settings(R"({"apiKey":"secret"})");
    const auto added = withOwnEntries(R"({"hooks":{"PermissionRequest":[{"hooks":[{OWN}]}]}})");
    EXPECT_EQ(preview(settings.url()),
        "目标配置：" + settings.url()
            + "\n来源：quillmoss\n"
              "安装前将创建仅当前用户可读的备份，保留其他设置和他人的 hooks。\n"
              "仅接入 PermissionRequest，正常命令不弹窗；移除本应用旧版 PreToolUse 逐命令拦截。"
              "原生安全弹窗未必发送该事件，不以拦截全部命令作为替代。\n"
              "以下仅显示本应用拟添加的 hook，不显示现有设置或密钥：\n"
            + Json::parse(added)->pretty() + "\n");
    preview(settings.directory() + "/none/settings.json");
    const std::filesystem::directory_iterator all(settings.directory());
    EXPECT_EQ(std::distance(all, {}), 1) << "settings.json";

    settings.write("[]");
    EXPECT_EQ(failureOf([&] { preview(settings.url()); }), notJson);
}

} // namespace
} // namespace notch
