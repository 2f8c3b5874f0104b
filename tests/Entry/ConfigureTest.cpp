// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "HookConfiguration/HookInstaller.h"
#include "support/PrivateAccount.h"
#include "support/SettingsFile.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

using Arguments = std::vector<std::string>;
using Ending = ChildProcess::Ending;

class Configure : public testing::Test {
protected:
    void SetUp() override
    {
        if (!canWrapAccount())
            GTEST_SKIP() << "no wrapper of the account database";
        ASSERT_TRUE(shown().output.starts_with("目标配置：" + settings.url() + "\n"));
    }

    Ending run(const Arguments& arguments) const
    {
        return runProgramAtHome(settings.home(), PROGRAM_PATH, arguments);
    }
    Ending shown() const { return run({"--configure", "quillmoss"}); }
    Ending runCompletion(const char* word) const { return run({"--configure-completion", word}); }

    // The one backup of the file.
    std::string backup() const { return backups + '/' + settings.backups().at(0); }

    const SettingsFile settings;
    const std::string backups = settings.directory() + "/.quillmoss-notch-backups";
    const HookInstaller installer;
};

TEST_F(Configure, touchesNothingUnlessToldTo)
{
    const auto preview = installer.preview(
        settings.url(), PROGRAM_PATH, "quillmoss", HookInstaller::InterceptBash::no);
    for (const auto& [arguments, ending] : std::vector<std::pair<Arguments, Ending>>{
             {{"--configure", "quillmoss"}, {0, preview + "\n", ""}},
             {{"--configure", "quillmoss", "--aply", "--hook"},
                 {0, preview + "\n", "Unknown option --aply: nothing was written.\n"}},
             {{"--configure", "quillmoss", "--remove", "--apply"}, {1, "", ""}},
             {{"--configure", "quillmoss", "--apply", "--compat-bash"},
                 {1, "",
                     "Configuration failed: 已停用逐命令拦截；仅支持 QuillMoss 真实权限请求。\n"}},
             {{"--configure-completion", "--remove"},
                 {1, "", "Completion configuration failed: 配置文件不存在。\n"}},
         })
        EXPECT_EQ(run(arguments), ending) << testing::PrintToString(arguments);
    EXPECT_TRUE(settings.leftovers().empty() && settings.backups().empty());
}

TEST_F(Configure, appliesAndRemovesEachHookByItself)
{
    const auto preview = shown().output;
    const auto applied = run({"--configure", "quillmoss", "--apply"});
    const auto told = "Installed. Restart QuillMoss to load hooks. Backup: " + backup() + "\n";
    EXPECT_EQ(applied, (Ending{0, preview + told, ""}));
    EXPECT_NE(settings.text().find(
                  HookInstaller::shellQuote(PROGRAM_PATH) + " '--hook' '--source' 'quillmoss'"),
        std::string::npos);

    const auto approvalAlone = settings.text();
    EXPECT_EQ(runCompletion("--apply"),
        (Ending{0,
            "Installed independent turn-end notification hooks; existing approvals preserved.\n",
            ""}));
    EXPECT_TRUE(installer.completionInstalled(
        settings.url(), PROGRAM_PATH, HookInstaller::CompletionVariant::normal));
    EXPECT_EQ(runCompletion("--remove"),
        (Ending{
            0, "Removed turn-end notification hooks only; existing approvals preserved.\n", ""}));
    EXPECT_EQ(settings.text(), approvalAlone);

    std::filesystem::remove_all(backups);
    const auto removed = run({"--configure", "quillmoss", "--remove"});
    EXPECT_EQ(
        removed, (Ending{0, "Removed this application's hooks. Backup: " + backup() + "\n", ""}));
    EXPECT_EQ(settings.text(), "{}\n");

    EXPECT_FALSE(std::filesystem::exists(settings.home() + "/.quillmoss-ai"));
    EXPECT_EQ(run({"--configure", "quillmossAI", "--apply"}).status, 0);
    EXPECT_EQ(settings.text(), "{}\n");
    EXPECT_TRUE(std::filesystem::exists(settings.home() + "/.quillmoss-ai/settings.json"));
}

TEST_F(Configure, endsInOneLineWhenItsOutputIsLost)
{
    const std::string fullDisk = "exec >/dev/full";
    const std::string brokenPipe = "mkfifo \"$1\"; exec 3<>\"$1\" >\"$1\" 3>&-";
    const auto lose = [&](const std::string& output, const std::string& option) {
        const auto command = output + "; exec \"$0\" --configure quillmoss " + option;
        const auto pipe = settings.home() + "/pipe" + option;
        return runProgramAtHome(settings.home(), "/bin/sh", {"-c", command, PROGRAM_PATH, pipe});
    };
    for (const auto& output : {fullDisk, brokenPipe}) {
        EXPECT_EQ(lose(output, "--apply"),
            (Ending{1, "",
                "Configuration failed: standard output cannot be written; nothing was "
                "changed.\n"}));
        EXPECT_FALSE(settings.exists());
    }
    settings.write("{ }");
    const auto removal = lose(brokenPipe, "--remove");
    EXPECT_EQ(removal.status, 1);
    EXPECT_TRUE(removal.errors.starts_with("Standard output cannot be written. Removed "));
}

} // namespace
} // namespace notch
