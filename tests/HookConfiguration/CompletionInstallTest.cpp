// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Foundation/Json.h"
#include "HookConfiguration/HookInstaller.h"
#include "support/SettingsFile.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

using Variant = HookInstaller::CompletionVariant;

constexpr const char* executable = "/a/QuillMossNotch";
constexpr const char* edited = "结束提醒 Hook 的选项已被修改，请先手动核对；未覆盖配置。";

std::string hook(const std::string& command, const char* timeout)
{
    return R"({"type":"command","timeout":)" + std::string(timeout) + R"(,"command":)"
         + Json(command).compact() + "}";
}

std::string replaced(std::string text, std::string_view from, std::string_view to)
{
    for (auto at = text.find(from); at != text.npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

// OWN stands for the own hook, OWN_MOVED for that of a copy at another path, OWN_PROBE for the
// other variant, OWN_AI for what only looks like one, and APPROVAL for an approval hook.
std::string expanded(std::string text)
{
    const auto own = HookInstaller::completionCommand(executable, Variant::normal);
    for (const auto& [word, replacement] : {
             std::pair{
                 "OWN_MOVED", hook(HookInstaller::completionCommand("/b/N", Variant::normal), "2")},
             std::pair{"OWN_PROBE",
                 hook(HookInstaller::completionCommand(executable, Variant::probe), "2")},
             std::pair{"OWN_AI", hook(replaced(own, "'quillmoss'", "'quillmossAI'"), "2")},
             std::pair{"OWN_SLOW", hook(own, "5")},
             std::pair{"OWN_SAME", hook(own, "2.0")},
             std::pair{"OWN", hook(own, "2")},
             std::pair{"APPROVAL", hook(HookInstaller::approvalCommand("/c/N", "quillmoss"), "60")},
         })
        text = replaced(std::move(text), word, replacement);
    return R"({"hooks":{)" + text + R"(},"key":1})";
}

const std::string installed =
    R"("UserPromptSubmit":[{"hooks":[OWN]}],"FinalStop":[{"hooks":[OWN]}])";
const std::string approvals = R"("PermissionRequest":[{"hooks":[APPROVAL],"note":1}],)"
                              R"("PreToolUse":[{"matcher":"Bash","hooks":[APPROVAL]}],)";

struct Row {
    const char* name;
    std::string before;
    std::string installed;
    std::string removed; // From `before`.
};

const std::vector<Row> changes{
    {"beside approvals", approvals + R"("Stop":[])", approvals + R"("Stop":[],)" + installed,
        approvals + R"("Stop":[])"},
    {"installed", R"("Stop":[],)" + installed, R"("Stop":[],)" + installed, R"("Stop":[])"},
    {"only at the end of a turn", R"("Stop":[],"FinalStop":[{"hooks":[OWN]}])",
        R"("Stop":[],)" + installed, R"("Stop":[])"},
    {"the other variant, twice, and a moved one",
        R"("Stop":[],"UserPromptSubmit":[{"hooks":[OWN_PROBE,OWN_PROBE]},{"hooks":[OWN_MOVED]}])",
        R"("Stop":[],)" + installed, R"("Stop":[])"},
    {"timeout written otherwise", R"("Stop":[],"FinalStop":[{"hooks":[OWN_SAME]},{"hooks":[]}])",
        R"("Stop":[],"UserPromptSubmit":[{"hooks":[OWN]}],"FinalStop":[{"hooks":[]},{"hooks":[OWN]}])",
        R"("Stop":[],"FinalStop":[{"hooks":[]}])"},
    {"among foreign hooks and groups",
        R"("FinalStop":[{"hooks":[{"type":"x"},OWN]},{"hooks":[],"matcher":"a"}])",
        R"("UserPromptSubmit":[{"hooks":[OWN]}],)"
        R"("FinalStop":[{"hooks":[{"type":"x"}]},{"hooks":[],"matcher":"a"},{"hooks":[OWN]}])",
        R"("FinalStop":[{"hooks":[{"type":"x"}]},{"hooks":[],"matcher":"a"}])"},
    {"of the other edition, which is nobody's", R"("FinalStop":[{"hooks":[OWN_AI],"matcher":"*"}])",
        R"("UserPromptSubmit":[{"hooks":[OWN]}],)"
        R"("FinalStop":[{"hooks":[OWN_AI],"matcher":"*"},{"hooks":[OWN]}])",
        R"("FinalStop":[{"hooks":[OWN_AI],"matcher":"*"}])"},
    {"in an event that is not looked at", R"("Stop":[{"hooks":[OWN]}])",
        R"("Stop":[{"hooks":[OWN]}],)" + installed, R"("Stop":[{"hooks":[OWN]}])"},
};

TEST(CompletionInstall, changesItsOwnEntriesOnly)
{
    const HookInstaller installer;
    for (const auto& row : changes) {
        const SettingsFile settings(expanded(row.before));
        const auto backup =
            installer.installCompletion(settings.url(), executable, Variant::normal);
        EXPECT_EQ(SettingsFile::textOf(backup), expanded(row.before)) << row.name;
        EXPECT_EQ(Json::parse(settings.text()), Json::parse(expanded(row.installed))) << row.name;
        EXPECT_TRUE(installer.completionInstalled(settings.url(), executable, Variant::normal))
            << row.name;

        settings.write(expanded(row.before));
        installer.uninstallCompletion(settings.url());
        EXPECT_EQ(Json::parse(settings.text()), Json::parse(expanded(row.removed))) << row.name;
        EXPECT_EQ(settings.backups().size(), 2U) << row.name;
        EXPECT_EQ(settings.leftovers(), std::vector<std::string>{"settings.json"}) << row.name;
    }
}

TEST(CompletionInstall, leavesTheApprovalHookToItsOwnInstaller)
{
    const SettingsFile settings;
    const HookInstaller installer;
    installer.install(settings.url(), executable, "quillmossAI", HookInstaller::InterceptBash::no);
    const auto approvalAlone = settings.text();
    installer.installCompletion(settings.url(), executable, Variant::normal);
    const auto both = settings.text();
    installer.uninstallCompletion(settings.url());
    EXPECT_EQ(settings.text(), approvalAlone);

    settings.write(both);
    installer.uninstall(settings.url());
    EXPECT_TRUE(installer.completionInstalled(settings.url(), executable, Variant::normal));
    installer.uninstallCompletion(settings.url());
    EXPECT_EQ(settings.text(), "{}\n");
}

TEST(CompletionInstall, replacesEitherVariantByTheOther)
{
    const SettingsFile settings(expanded(installed));
    const HookInstaller installer;
    installer.installCompletion(settings.url(), executable, Variant::probe);
    EXPECT_EQ(Json::parse(settings.text()),
        Json::parse(expanded(replaced(installed, "OWN", "OWN_PROBE"))));
    EXPECT_TRUE(installer.completionInstalled(settings.url(), executable, Variant::probe));
    EXPECT_FALSE(installer.completionInstalled(settings.url(), executable, Variant::normal));
}

TEST(CompletionInstall, stopsAtAnOwnEntryEditedByHand)
{
    const HookInstaller installer;
    for (const auto* text : {
             R"("FinalStop":[{"hooks":[OWN],"matcher":"*"}])",
             R"("FinalStop":[{"hooks":[OWN],"note":null}])",
             R"("UserPromptSubmit":[{"hooks":[OWN_SLOW]}])",
             R"("UserPromptSubmit":[{"hooks":[OWN]},{"hooks":[OWN_PROBE],"matcher":""}])",
         }) {
        const auto before = expanded(text);
        const SettingsFile settings(before);
        const auto url = settings.url();
        EXPECT_EQ(failureOf([&] { installer.installCompletion(url, executable, Variant::normal); }),
            edited)
            << text;
        EXPECT_EQ(failureOf([&] { installer.uninstallCompletion(url); }), edited) << text;
        EXPECT_EQ(
            failureOf([&] { installer.completionInstalled(url, executable, Variant::normal); }),
            edited)
            << text;
        EXPECT_EQ(settings.text(), before) << text;
        EXPECT_TRUE(settings.backups().empty()) << text;
    }
}

TEST(CompletionInstall, isInstalledOnlyAsThisProgramWouldWriteIt)
{
    struct Presence {
        const char* name;
        std::string text;
        bool present;
    };
    for (const auto& row : std::vector<Presence>{
             {"as written", installed, true},
             {"among others",
                 R"("UserPromptSubmit":[{"hooks":[]},{"hooks":[OWN,{"type":"x"}]}],)"
                 R"("FinalStop":[{"hooks":[OWN_AI]},{"hooks":[OWN]}])",
                 true},
             {"nothing", R"("Stop":[])", false},
             {"in one event", R"("FinalStop":[{"hooks":[OWN]}])", false},
             {"twice in one event", installed + R"(,"FinalStop":[{"hooks":[OWN]},{"hooks":[OWN]}])",
                 false},
             {"beside the other variant",
                 installed + R"(,"FinalStop":[{"hooks":[OWN]},{"hooks":[OWN_PROBE]}])", false},
             {"from another path", replaced(installed, "OWN", "OWN_MOVED"), false},
             {"other variant", replaced(installed, "OWN", "OWN_PROBE"), false},
         }) {
        const auto text = expanded(row.text);
        const SettingsFile settings(text);
        EXPECT_EQ(HookInstaller().completionInstalled(settings.url(), executable, Variant::normal),
            row.present)
            << row.name;
        EXPECT_EQ(settings.text(), text) << row.name;
        EXPECT_TRUE(settings.backups().empty()) << row.name;
    }
}

TEST(CompletionInstall, treatsAMissingFileAsOneWithoutEntries)
{
    const SettingsFile settings;
    const HookInstaller installer;
    for (const auto& url : {settings.url(), settings.directory() + "/none/settings.json"}) {
        EXPECT_FALSE(installer.completionInstalled(url, executable, Variant::normal));
        EXPECT_EQ(failureOf([&] { installer.uninstallCompletion(url); }), "配置文件不存在。");
    }
    EXPECT_TRUE(settings.leftovers().empty());
    const auto backup = installer.installCompletion(settings.url(), executable, Variant::normal);
    EXPECT_EQ(SettingsFile::textOf(backup), "{}\n");
    EXPECT_EQ(Json::parse(settings.text())->member("hooks")->compact(),
        Json::parse(expanded(installed))->member("hooks")->compact());
}

TEST(CompletionInstall, needsAnAbsoluteExecutable)
{
    const SettingsFile settings;
    const auto message = "需要绝对可执行文件路径和有效的 QuillMoss 来源。";
    const HookInstaller installer;
    EXPECT_EQ(failureOf([&] { installer.installCompletion(settings.url(), "N", Variant::normal); }),
        message);
    EXPECT_EQ(
        failureOf([&] { installer.completionInstalled(settings.url(), "N", Variant::probe); }),
        message);
    EXPECT_TRUE(settings.leftovers().empty());
}

} // namespace
} // namespace notch
