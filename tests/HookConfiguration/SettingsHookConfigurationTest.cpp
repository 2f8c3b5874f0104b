// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "HookConfiguration/SettingsHookConfiguration.h"

#include "HookConfiguration/ConfiguredProfiles.h"
#include "support/SettingsFile.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

using Result = SettingsHookConfiguration;
using State = Result::State;

const Result changed{State::review,
    "发现本应用命令，但来源、事件或选项有改动，无法确认有效接入。请检查配置；"
    "安装器不会覆盖手动修改的 Hook。",
    false};
const Result moved{State::reconnect,
    "Hook 指向其他应用路径，无法确认该路径是否仍有效。请固定本应用位置后更新接入。", false};
const Result exact{
    State::installed, "PermissionRequest 命令与当前应用路径、所选版本完全匹配。", false};
const Result incomplete{
    State::review, "发现本应用 Hook，但缺少完整的 PermissionRequest 接入，请检查或更新。", false};
const Result none{State::missing, "未发现本应用的完整 PermissionRequest 命令。", false};
const Result noFile{State::missing, "尚无 settings.json；确认安装后才会创建。", false};
const Result noHooks{State::missing, "未发现本应用的 PermissionRequest 配置。", false};

Result intercepting(Result result)
{
    result.interceptBash = true;
    return result;
}

Result invalid(const std::string& reason)
{
    return {State::invalid, reason + " 仅读取，未修改配置。", std::nullopt};
}

Result inspect(const std::string& url)
{
    return Result::inspect(url, ownExecutable, QuillMossProfile::quillmoss);
}

TEST(SettingsHookConfiguration, judgesByTheFirstRuleThatHolds)
{
    struct Row {
        std::string file;
        Result result;
        bool configured = false; // The model counts the edition as configured.
    };
    const auto holding = [](const std::string& hooks) { return R"({"hooks":)" + hooks + "}"; };
    const auto ask = [&](const std::string& groups) {
        return holding(R"({"PermissionRequest":[)" + groups + "]}");
    };
    for (const auto& row : {
             Row{ask(R"({"hooks":[{"type":"x"},{OWN}]})"), exact, true},
             Row{ask(R"({"hooks":[]},{"hooks":[{OWN,"timeout":60.0}]})"), exact, true},
             Row{holding(R"({"PermissionRequest":[{"hooks":[{OWN}]}],)"
                         R"("PreToolUse":[{"hooks":[{OWN}],"matcher":"Bash"}]})"),
                 intercepting(exact), true},
             Row{holding(R"({"PreToolUse":[{"hooks":[{OWN}],"matcher":"Bash"}]})"),
                 intercepting(incomplete)},
             Row{holding(R"({"PreToolUse":[{"hooks":[{OWN}]}]})"), intercepting(changed)},
             Row{ask(R"({"hooks":[{OWN},{OWN_MOVED}]})"), moved, true},
             Row{ask(R"({"hooks":[{OWN_MOVED}]},{"hooks":[{OWN}],"matcher":""})"), changed},
             Row{ask(R"({"hooks":[{OWN_AI}]})"), changed},
             Row{ask(R"({"hooks":[{OWN,"timeout":30}]})"), changed},
             Row{ask(R"({"hooks":[{OWN,"note":1}]})"), changed, true},
             Row{ask(R"({"hooks":[{OWN}],"note":1})"), changed, true},
             Row{holding(R"({"PreToolUse":[{"hooks":[{OWN}],"matcher":"Bash"}],)"
                         R"("UserPromptSubmit":[{"hooks":[{OWN}]}]})"),
                 intercepting(changed)},
             Row{ask(R"({"hooks":[{OWN,"type":"prompt"}]})"), none},
             Row{holding(R"({"Stop":1})"), invalid("Hook 事件必须包含分组数组。")},
             Row{holding("[]"), invalid("hooks 必须是 JSON 对象。")},
             Row{"{}", noHooks},
             Row{"[]", invalid("settings.json 必须是 JSON 对象。")},
             Row{"{", invalid("settings.json 不是合法 JSON。")},
         }) {
        const SettingsFile settings(withOwnEntries(row.file));
        EXPECT_EQ(inspect(settings.url()), row.result) << row.file;
        EXPECT_EQ(holdsApprovalHook(FileSystem::real(), settings.url(), ownExecutable,
                      QuillMossProfile::quillmoss),
            row.configured)
            << row.file;
    }
}

TEST(SettingsHookConfiguration, judgesAMissingFileAndMakesNone)
{
    const SettingsFile settings;
    EXPECT_EQ(inspect(settings.url()), noFile);
    EXPECT_EQ(inspect(settings.directory() + "/none/settings.json"), noFile);
    EXPECT_TRUE(std::filesystem::is_empty(settings.directory()));
}

} // namespace
} // namespace notch
