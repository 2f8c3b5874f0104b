// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "HookConfiguration/HookInstaller.h"
#include "support/PrivateAccount.h"
#include "support/SettingsFile.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

class ConfigureCompletion : public testing::Test {
protected:
    void SetUp() override
    {
        if (!canWrapAccount())
            GTEST_SKIP() << "no wrapper of the account database";
    }

    void expectRun(
        const char* word, int status, const std::string& output, const std::string& errors) const
    {
        const auto ending =
            runProgramAtHome(settings.home(), PROGRAM_PATH, {"--configure-completion", word});
        EXPECT_EQ(ending.status, status) << word;
        EXPECT_EQ(ending.output, output) << word;
        EXPECT_EQ(ending.errors, errors) << word;
    }

    const SettingsFile settings;
    const HookInstaller installer;
};

TEST_F(ConfigureCompletion, appliesAndRemovesBesideAnApprovalHook)
{
    installer.install(settings.url(), PROGRAM_PATH, "quillmoss", HookInstaller::InterceptBash::no);
    const auto approvalAlone = settings.text();
    expectRun("--apply", 0,
        "Installed independent turn-end notification hooks; existing approvals preserved.\n", "");
    EXPECT_TRUE(installer.completionInstalled(
        settings.url(), PROGRAM_PATH, HookInstaller::CompletionVariant::normal));
    expectRun("--remove", 0,
        "Removed turn-end notification hooks only; existing approvals preserved.\n", "");
    EXPECT_EQ(settings.text(), approvalAlone);
    EXPECT_FALSE(std::filesystem::exists(settings.home() + "/.quillmoss-ai"));
}

TEST_F(ConfigureCompletion, saysWhyItFailed)
{
    expectRun("--remove", 1, "", "Completion configuration failed: 配置文件不存在。\n");
    settings.write("[]");
    expectRun("--apply", 1, "",
        "Completion configuration failed: 配置必须是合法 JSON 对象；未修改文件。\n");
    EXPECT_EQ(settings.text(), "[]");
}

} // namespace
} // namespace notch
