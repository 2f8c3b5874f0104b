// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "HookConfiguration/HookInstaller.h"
#include "support/PrivateAccount.h"
#include "support/SettingsFile.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

struct ProgramRun {
    int status = 0;
    std::string output;
    std::string errors;
    bool operator==(const ProgramRun&) const = default;
};

class Configure : public testing::Test {
protected:
    void SetUp() override
    {
        if (!canWrapAccount())
            GTEST_SKIP() << "no wrapper of the account database";
        const auto shown = run({"--configure", "quillmoss"});
        ASSERT_TRUE(shown.output.starts_with("目标配置：" + settings.url() + "\n")) << shown.output;
    }

    ProgramRun run(const std::vector<std::string>& arguments) const
    {
        const auto ending = runProgramAtHome(settings.home(), PROGRAM_PATH, arguments);
        return {ending.status, ending.output, ending.errors};
    }
    // The one backup of the file.
    std::string backup() const
    {
        return settings.directory() + "/.quillmoss-notch-backups/" + settings.backups().at(0);
    }

    const SettingsFile settings;
};

TEST_F(Configure, showsAndChangesNothing)
{
    const auto shown = run({"--configure", "quillmoss"});
    const auto text = HookInstaller().preview(
        settings.url(), PROGRAM_PATH, "quillmoss", HookInstaller::InterceptBash::no);
    EXPECT_EQ(shown, (ProgramRun{0, text + "\n", ""}));
    EXPECT_TRUE(settings.leftovers().empty());
    EXPECT_TRUE(settings.backups().empty());
}

TEST_F(Configure, appliesAndRemoves)
{
    const auto shown = run({"--configure", "quillmoss"}).output;
    const auto applied = run({"--configure", "quillmoss", "--apply"});
    EXPECT_EQ(applied,
        (ProgramRun{0,
            shown + "Installed. Restart QuillMoss to load hooks. Backup: " + backup() + "\n", ""}));
    EXPECT_NE(settings.text().find(
                  HookInstaller::shellQuote(PROGRAM_PATH) + " '--hook' '--source' 'quillmoss'"),
        std::string::npos);

    std::filesystem::remove(backup());
    const auto removed = run({"--configure", "quillmoss", "--remove"});
    EXPECT_EQ(removed,
        (ProgramRun{0, "Removed this application's hooks. Backup: " + backup() + "\n", ""}));
    EXPECT_EQ(settings.text(), "{}\n");
}

TEST_F(Configure, keepsTheEditionsApart)
{
    EXPECT_EQ(run({"--configure", "quillmossAI", "--apply"}).status, 0);
    EXPECT_FALSE(settings.exists());
    EXPECT_TRUE(std::filesystem::exists(settings.home() + "/.quillmoss-ai/settings.json"));
    EXPECT_EQ(run({"--configure", "quillmoss", "--remove"}),
        (ProgramRun{1, "", "Configuration failed: 配置文件不存在；没有可卸载的 hook。\n"}));
}

TEST_F(Configure, refusesOtherArguments)
{
    struct Row {
        const char* name;
        std::vector<std::string> arguments;
        const char* errors;
    };
    for (const auto& row : {
             Row{"apply and remove", {"--configure", "quillmoss", "--remove", "--apply"}, ""},
             Row{"retired interception", {"--configure", "quillmoss", "--apply", "--compat-bash"},
                 "Configuration failed: 已停用逐命令拦截；仅支持 QuillMoss 真实权限请求。\n"},
         }) {
        EXPECT_EQ(run(row.arguments), (ProgramRun{1, "", row.errors})) << row.name;
        EXPECT_TRUE(settings.leftovers().empty()) << row.name;
        EXPECT_TRUE(settings.backups().empty()) << row.name;
    }
}

} // namespace
} // namespace notch
