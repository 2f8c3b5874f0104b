// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "HookConfiguration/HookInstaller.h"
#include "support/SettingsFile.h"
#include "support/WatchedFileSystem.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

using Variant = HookInstaller::CompletionVariant;

constexpr auto own = R"({"hooks":[{TURN}]})";
constexpr auto probe = R"({"hooks":[{TURN_PROBE}]})";
constexpr auto moved = R"({"hooks":[{TURN_MOVED}]})";

std::string document(const std::string& startGroups, const std::string& endGroups)
{
    return withOwnEntries(R"({"hooks":{"UserPromptSubmit":[)" + startGroups + R"(],"FinalStop":[)"
                          + endGroups + "]}}");
}

TEST(CompletionInstall, isInstalledOnlyAsThisProgramWouldWriteIt)
{
    struct Row {
        const char* name;
        std::string startGroups;
        std::string endGroups;
        bool present;
        Variant variant = Variant::normal;
    };
    for (const auto& row : {
             Row{"as written", own, own, true},
             Row{"among others", R"({"hooks":[]},{"hooks":[{TURN},{"type":"x"}]})", own, true},
             Row{"twice in one event", own, std::string(own) + "," + own, false},
             Row{"beside the other variant", own, std::string(own) + "," + probe, false},
             Row{"from another path", moved, moved, false},
             Row{"other variant", probe, probe, false},
             Row{"other variant, as asked", probe, probe, true, Variant::probe},
         }) {
        const auto text = document(row.startGroups, row.endGroups);
        const SettingsFile settings(text);
        EXPECT_EQ(HookInstaller().completionInstalled(settings.url(), ownExecutable, row.variant),
            row.present)
            << row.name;
        EXPECT_EQ(settings.text(), text) << row.name;
        EXPECT_TRUE(settings.backups().empty()) << row.name;
    }
}

TEST(CompletionInstall, canNotBeToldOfAnEntryEditedByHand)
{
    const SettingsFile settings(document(own, R"({"hooks":[{TURN}],"matcher":"*"})"));
    EXPECT_EQ(failureOf([&] {
        HookInstaller().completionInstalled(settings.url(), ownExecutable, Variant::normal);
    }),
        "结束提醒 Hook 的选项已被修改，请先手动核对；未覆盖配置。");
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
    EXPECT_EQ(failureOf([&] {
        HookInstaller(files).completionInstalled(settings.url(), ownExecutable, Variant::normal);
    }),
        "配置已被其他程序修改；为防止覆盖，操作已取消。");
}

TEST(CompletionInstall, treatsAMissingFileAsOneWithoutEntries)
{
    const SettingsFile settings;
    const HookInstaller installer;
    for (const auto& url : {settings.url(), settings.directory() + "/none/settings.json"}) {
        EXPECT_FALSE(installer.completionInstalled(url, ownExecutable, Variant::normal));
        EXPECT_EQ(failureOf([&] { installer.uninstallCompletion(url); }), "配置文件不存在。");
    }
    EXPECT_TRUE(settings.leftovers().empty());
    for (const auto* text : {"{}", R"({"hooks":{"FinalStop":[{"hooks":[{TURN}]}]}})"}) {
        settings.write(withOwnEntries(text));
        EXPECT_FALSE(installer.completionInstalled(settings.url(), ownExecutable, Variant::normal));
    }
}

} // namespace
} // namespace notch
