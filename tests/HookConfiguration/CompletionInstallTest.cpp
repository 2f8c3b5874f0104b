// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "HookConfiguration/HookInstaller.h"
#include "support/SettingsFile.h"
#include "support/WatchedFileSystem.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

using Variant = HookInstaller::CompletionVariant;

constexpr auto edited = "结束提醒 Hook 的选项已被修改，请先手动核对；未覆盖配置。";

// "yes", "no", or why it cannot be told.
std::string isInstalled(const std::string& url, Variant variant, const FileSystem& files)
{
    bool present = false;
    const auto why = failureOf(
        [&] { present = HookInstaller(files).completionInstalled(url, ownExecutable, variant); });
    return !why.empty() ? why : present ? "yes" : "no";
}

TEST(CompletionInstall, isInstalledOnlyAsThisProgramWouldWriteIt)
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
        EXPECT_EQ(isInstalled(settings.url(), row.variant, FileSystem::real()), row.answer)
            << row.name;
        EXPECT_EQ(settings.text(), text) << row.name;
        EXPECT_TRUE(settings.backups().empty()) << row.name;
    }
}

TEST(CompletionInstall, canNotBeToldOfAFileThatChangesMeanwhile)
{
    const SettingsFile settings("{}");
    int looks = 0;
    const WatchedFileSystem files([&](const WatchedFileSystem::Call& call) {
        if (call.name == "open" && ++looks == 2)
            settings.write("{ }");
        return WatchedFileSystem::Fault{};
    });
    EXPECT_EQ(isInstalled(settings.url(), Variant::normal, files),
        "配置已被其他程序修改；为防止覆盖，操作已取消。");
}

TEST(CompletionInstall, treatsAMissingFileAsOneWithoutEntries)
{
    const SettingsFile settings;
    for (const auto& url : {settings.url(), settings.directory() + "/none/settings.json"}) {
        EXPECT_EQ(isInstalled(url, Variant::normal, FileSystem::real()), "no");
        EXPECT_EQ(failureOf([&] { HookInstaller().uninstallCompletion(url); }), "配置文件不存在。");
    }
    EXPECT_TRUE(settings.leftovers().empty());
}

} // namespace
} // namespace notch
