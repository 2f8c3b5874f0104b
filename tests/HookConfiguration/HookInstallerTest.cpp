// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "HookConfiguration/HookInstaller.h"
#include "Foundation/Json.h"
#include "support/OwnEntries.h"
#include "support/SettingsFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace notch {
namespace {

using InterceptBash = HookInstaller::InterceptBash;

constexpr const char* executable = ownExecutable;
constexpr const char* handEdited = "本应用的 hook 已被手动修改；为避免覆盖更改，操作已停止。";

struct Row {
    const char* name;
    const char* before;
    const char* installed;
    const char* removed; // From `before`.
};

const std::vector<Row> changes{
    {"empty document", "{}", R"({"hooks":{"PermissionRequest":[{"hooks":[OWN]}]}})", "{}"},
    {"no own entry", R"({"hooks":{"Stop":[{"hooks":[],"x":1}]},"key":[]})",
        R"({"hooks":{"Stop":[{"hooks":[],"x":1}],"PermissionRequest":[{"hooks":[OWN]}]},"key":[]})",
        R"({"hooks":{"Stop":[{"hooks":[],"x":1}]},"key":[]})"},
    {"empty hooks", R"({"hooks":{}})", R"({"hooks":{"PermissionRequest":[{"hooks":[OWN]}]}})",
        "{}"},
    {"between foreign groups",
        R"({"hooks":{"PermissionRequest":[{"hooks":[],"matcher":"a"},{"hooks":[OWN]},{"hooks":[],"matcher":"b"}]}})",
        R"({"hooks":{"PermissionRequest":[{"hooks":[],"matcher":"a"},{"hooks":[],"matcher":"b"},{"hooks":[OWN]}]}})",
        R"({"hooks":{"PermissionRequest":[{"hooks":[],"matcher":"a"},{"hooks":[],"matcher":"b"}]}})"},
    {"in a group with foreign hooks",
        R"({"hooks":{"PermissionRequest":[{"hooks":[{"type":"x"},OWN,{"type":"y"}]}]}})",
        R"({"hooks":{"PermissionRequest":[{"hooks":[{"type":"x"},{"type":"y"}]},{"hooks":[OWN]}]}})",
        R"({"hooks":{"PermissionRequest":[{"hooks":[{"type":"x"},{"type":"y"}]}]}})"},
    {"in a group with a foreign key",
        R"({"hooks":{"PermissionRequest":[{"hooks":[OWN],"note":1}]}})",
        R"({"hooks":{"PermissionRequest":[{"hooks":[],"note":1},{"hooks":[OWN]}]}})",
        R"({"hooks":{"PermissionRequest":[{"hooks":[],"note":1}]}})"},
    {"twice, of both editions",
        R"({"hooks":{"PermissionRequest":[{"hooks":[OWN]},{"hooks":[OWN_AI,OWN_MOVED]}]}})",
        R"({"hooks":{"PermissionRequest":[{"hooks":[OWN]}]}})", "{}"},
    {"of every command", R"({"hooks":{"PreToolUse":[{"hooks":[OWN_AI],"matcher":"Bash"}]}})",
        R"({"hooks":{"PermissionRequest":[{"hooks":[OWN]}]}})", "{}"},
    {"timeout written otherwise",
        R"({"hooks":{"PermissionRequest":[{"hooks":[{BARE,"timeout":6.0e1}]},{"hooks":[]}]}})",
        R"({"hooks":{"PermissionRequest":[{"hooks":[]},{"hooks":[OWN]}]}})",
        R"({"hooks":{"PermissionRequest":[{"hooks":[]}]}})"},
    {"in an event that is not looked at", R"({"hooks":{"Stop":[{"hooks":[OWN]}]}})",
        R"({"hooks":{"Stop":[{"hooks":[OWN]}],"PermissionRequest":[{"hooks":[OWN]}]}})",
        R"({"hooks":{"Stop":[{"hooks":[OWN]}]}})"},
    {"of a type that is not command",
        R"({"hooks":{"PermissionRequest":[{"hooks":[{BARE,"type":"prompt"}]}]}})",
        R"({"hooks":{"PermissionRequest":[{"hooks":[{BARE,"type":"prompt"}]},{"hooks":[OWN]}]}})",
        R"({"hooks":{"PermissionRequest":[{"hooks":[{BARE,"type":"prompt"}]}]}})"},
    {"empty event", R"({"hooks":{"PermissionRequest":[],"PreToolUse":[],"Stop":[]}})",
        R"({"hooks":{"Stop":[],"PermissionRequest":[{"hooks":[OWN]}]}})",
        R"({"hooks":{"Stop":[]}})"},
};

TEST(HookInstaller, changesItsOwnEntriesOnly)
{
    const HookInstaller installer;
    for (const auto& row : changes) {
        const SettingsFile settings(withOwnEntries(row.before));
        const auto backup =
            installer.install(settings.url(), executable, "quillmoss", InterceptBash::no);
        EXPECT_EQ(SettingsFile::textOf(backup), withOwnEntries(row.before)) << row.name;
        EXPECT_EQ(settings.text(), Json::parse(withOwnEntries(row.installed))->pretty() + "\n")
            << row.name;

        settings.write(withOwnEntries(row.before));
        installer.uninstall(settings.url());
        EXPECT_EQ(Json::parse(settings.text()), Json::parse(withOwnEntries(row.removed)))
            << row.name;
        EXPECT_EQ(settings.backups().size(), 2U) << row.name;
        EXPECT_EQ(settings.leftovers(), std::vector<std::string>{"settings.json"}) << row.name;
    }
}

TEST(HookInstaller, stopsAtAnOwnEntryEditedByHand)
{
    struct Edited {
        const char* name;
        const char* text;
    };
    for (const auto& row : {
             Edited{"other timeout", R"({"PermissionRequest":[{"hooks":[{BARE,"timeout":30}]}]})"},
             Edited{"another key", R"({"PermissionRequest":[{"hooks":[{BARE,"note":null}]}]})"},
             Edited{"a matcher", R"({"PermissionRequest":[{"hooks":[OWN],"matcher":""}]})"},
             Edited{"behind a good one",
                 R"({"PermissionRequest":[{"hooks":[OWN]},{"hooks":[OWN],"matcher":"Bash"}]})"},
             Edited{"of every command, no matcher", R"({"PreToolUse":[{"hooks":[OWN]}]})"},
             Edited{"of every command, other matcher",
                 R"({"PreToolUse":[{"hooks":[OWN],"matcher":"Write"}]})"},
         }) {
        const auto text = withOwnEntries(std::string(R"({"hooks":)") + row.text + "}");
        const SettingsFile settings(text);
        EXPECT_EQ(failureOf([&] {
            HookInstaller().install(settings.url(), executable, "quillmoss", InterceptBash::no);
        }),
            handEdited)
            << row.name;
        EXPECT_EQ(failureOf([&] { HookInstaller().uninstall(settings.url()); }), handEdited)
            << row.name;
        EXPECT_EQ(settings.text(), text) << row.name;
        EXPECT_TRUE(settings.backups().empty()) << row.name;
    }
}

TEST(HookInstaller, refusesSettingsTheHostMightNotUnderstand)
{
    struct Fault {
        const char* text;
        const char* message;
    };
    constexpr auto notJson = "配置必须是合法 JSON 对象；未修改文件。";
    for (const auto& row : {
             Fault{"", notJson},
             Fault{"[]", notJson},
             Fault{"\xEF\xBB\xBF{}", notJson},
             Fault{"{} // x", notJson},
             Fault{R"({"hooks":[]})", "hooks 必须是 JSON 对象。"},
             Fault{R"({"hooks":null})", "hooks 必须是 JSON 对象。"},
             Fault{R"({"hooks":{"Stop":{}}})", "Hook 事件必须包含分组数组。"},
             Fault{R"({"hooks":{"Stop":[{"matcher":1},1]}})", "Hook 事件必须包含分组数组。"},
             Fault{R"({"hooks":{"Stop":[{"matcher":1}]}})", "Hook matcher 必须是字符串。"},
             Fault{R"({"hooks":{"Stop":[{}]}})", "Hook 分组必须包含 hooks 数组。"},
             Fault{R"({"hooks":{"Stop":[{"hooks":[{},1]}]}})", "Hook 分组必须包含 hooks 数组。"},
             Fault{R"({"hooks":{"Stop":[{"hooks":[{}]}]}})", "Hook type 必须是字符串。"},
             Fault{R"({"hooks":{"Stop":[{"hooks":[{"type":""}]}]}})", "Hook type 必须是字符串。"},
             Fault{R"({"hooks":{"Stop":[{"hooks":[{"type":"command","url":"x"}]}]}})",
                 "Command hook 缺少字符串 command。"},
             Fault{R"({"hooks":{"Stop":[{"hooks":[{"type":"http","command":"x"}]}]}})",
                 "HTTP hook 缺少字符串 url。"},
             Fault{R"({"hooks":{"Stop":[{"hooks":[{"type":"x","timeout":"60"}]}]}})",
                 "Hook timeout 必须是数字。"},
             Fault{R"({"hooks":{"Stop":[{"hooks":[{"type":"x","timeout":null}]}]}})",
                 "Hook timeout 必须是数字。"},
             Fault{R"({"hooks":{"Stop":[{"hooks":[{"type":"x","timeout":true}]}]}})", ""},
             Fault{R"({"hooks":{"Stop":[{"hooks":[{"type":"x","timeout":1e999}]}]}})", ""},
         }) {
        const SettingsFile settings(row.text);
        const auto preview = [&] {
            HookInstaller().preview(settings.url(), executable, "quillmoss", InterceptBash::no);
        };
        const auto uninstall = [&] { HookInstaller().uninstall(settings.url()); };
        EXPECT_EQ(failureOf(preview), row.message) << row.text;
        EXPECT_EQ(failureOf(uninstall), row.message) << row.text;
        EXPECT_EQ(settings.text(), row.text);
    }
}

TEST(HookInstaller, writesAMissingFileWithItsDirectory)
{
    const TemporaryDirectory home;
    const auto directory = home / ".quillmoss-ai";
    const auto backup = HookInstaller().install(
        directory + "/settings.json", "/it's/N", "quillmossAI", InterceptBash::no);
    EXPECT_EQ(SettingsFile::textOf(directory + "/settings.json"), R"({
  "hooks" : {
    "PermissionRequest" : [
      {
        "hooks" : [
          {
            "command" : "'/it'\\''s/N' '--hook' '--source' 'quillmossAI' '--owner-marker' 'quillmoss-notch-v1'",
            "timeout" : 60,
            "type" : "command"
          }
        ]
      }
    ]
  }
}
)");
    EXPECT_EQ(SettingsFile::textOf(backup), "{}\n");
    const auto mode = [&](const std::string& path) {
        struct stat status { };
        return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0U;
    };
    EXPECT_EQ(mode(directory), 0700U);
    EXPECT_EQ(mode(directory + "/settings.json"), 0600U);
    EXPECT_EQ(mode(directory + "/.quillmoss-notch-v1.lock"), 0600U);
    EXPECT_EQ(mode(directory + "/.quillmoss-notch-backups"), 0700U);
    EXPECT_EQ(mode(backup), 0600U);
}

TEST(HookInstaller, writesNothingWhenNothingChanges)
{
    // A layout that this system does not write shows whether it wrote.
    const auto text = withOwnEntries(R"({"hooks":{"PermissionRequest":[ {"hooks":[OWN]} ]}})");
    const SettingsFile settings(text);
    HookInstaller().install(settings.url(), executable, "quillmoss", InterceptBash::no);
    EXPECT_EQ(settings.text(), text);
    EXPECT_EQ(settings.backups().size(), 1U);
}

TEST(HookInstaller, removesNothingFromNothing)
{
    const SettingsFile settings;
    const auto message = "配置文件不存在；没有可卸载的 hook。";
    const auto missing = settings.directory() + "/none/settings.json";
    EXPECT_EQ(failureOf([&] { HookInstaller().uninstall(settings.url()); }), message);
    EXPECT_EQ(failureOf([&] { HookInstaller().uninstall(missing); }), message);
    EXPECT_TRUE(settings.leftovers().empty());
    EXPECT_TRUE(settings.backups().empty());
}

TEST(HookInstaller, refusesTheRetiredInterceptionBeforeAnythingElse)
{
    const auto message = "已停用逐命令拦截；仅支持 QuillMoss 真实权限请求。";
    EXPECT_EQ(failureOf([] { HookInstaller().install("", "", "", InterceptBash::yes); }), message);
    EXPECT_EQ(failureOf([] { HookInstaller().preview("", "", "", InterceptBash::yes); }), message);
}

TEST(HookInstaller, previewsWithoutShowingOrTouchingTheFile)
{
    const SettingsFile settings(R"({"apiKey":"secret"})");
    EXPECT_EQ(HookInstaller().preview(settings.url(), executable, "quillmoss", InterceptBash::no),
        "目标配置：" + settings.url()
            + "\n来源：quillmoss\n"
              "安装前将创建仅当前用户可读的备份，保留其他设置和他人的 hooks。\n"
              "仅接入 PermissionRequest，正常命令不弹窗；移除本应用旧版 PreToolUse 逐命令拦截。"
              "原生安全弹窗未必发送该事件，不以拦截全部命令作为替代。\n"
              "以下仅显示本应用拟添加的 hook，不显示现有设置或密钥：\n"
            + Json::parse(withOwnEntries(R"({"hooks":{"PermissionRequest":[{"hooks":[OWN]}]}})"))
                  ->pretty()
            + "\n");
    EXPECT_TRUE(settings.backups().empty());
    EXPECT_FALSE(std::filesystem::exists(settings.directory() + "/.quillmoss-notch-v1.lock"));
}

} // namespace
} // namespace notch
