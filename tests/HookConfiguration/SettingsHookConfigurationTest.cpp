// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "HookConfiguration/SettingsHookConfiguration.h"

#include "HookConfiguration/ConfiguredProfiles.h"
#include "HookConfiguration/HookInstaller.h"
#include "support/OwnEntries.h"
#include "support/SettingsFile.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

using State = SettingsHookConfiguration::State;

constexpr const char* changedDetail =
    "发现本应用命令，但来源、事件或选项有改动，无法确认有效接入。请检查配置；"
    "安装器不会覆盖手动修改的 Hook。";
constexpr const char* movedDetail =
    "Hook 指向其他应用路径，无法确认该路径是否仍有效。请固定本应用位置后更新接入。";
constexpr const char* installedDetail = "PermissionRequest 命令与当前应用路径、所选版本完全匹配。";
constexpr const char* incompleteDetail =
    "发现本应用 Hook，但缺少完整的 PermissionRequest 接入，请检查或更新。";
constexpr const char* noneDetail = "未发现本应用的完整 PermissionRequest 命令。";

SettingsHookConfiguration inspect(const SettingsFile& settings)
{
    return SettingsHookConfiguration::inspect(
        settings.url(), ownExecutable, QuillMossProfile::quillmoss);
}

struct Row {
    const char* name;
    const char* hooks; // What the file's "hooks" holds.
    State state;
    std::string detail;
    std::optional<bool> interceptBash;
    bool configured = false; // The model counts the edition as configured.
};

TEST(SettingsHookConfiguration, judgesByTheFirstRuleThatHolds)
{
    for (const auto& row :
        {
            Row{"exact", R"({"PermissionRequest":[{"hooks":[{"type":"x"},OWN]}]})",
                State::installed, installedDetail, false, true},
            Row{"exact, timeout written otherwise",
                R"({"PermissionRequest":[{"hooks":[{BARE,"timeout":60.0}]}]})", State::installed,
                installedDetail, false, true},
            Row{"exact and legacy",
                R"({"PermissionRequest":[{"hooks":[OWN]}],"PreToolUse":[{"hooks":[OWN],"matcher":"Bash"}]})",
                State::installed, installedDetail, true, true},
            Row{"legacy alone", R"({"PreToolUse":[{"hooks":[OWN],"matcher":"Bash"}]})",
                State::review, incompleteDetail, true},
            Row{"legacy, no matcher", R"({"PreToolUse":[{"hooks":[OWN]}]})", State::review,
                changedDetail, true},
            Row{"exact and moved", R"({"PermissionRequest":[{"hooks":[OWN,OWN_MOVED]}]})",
                State::reconnect, movedDetail, false, true},
            Row{"moved and changed",
                R"({"PermissionRequest":[{"hooks":[OWN_MOVED]},{"hooks":[OWN],"matcher":""}]})",
                State::review, changedDetail, false},
            Row{"other edition", R"({"PermissionRequest":[{"hooks":[OWN_AI]}]})", State::review,
                changedDetail, false},
            Row{"other timeout", R"({"PermissionRequest":[{"hooks":[{BARE,"timeout":30}]}]})",
                State::review, changedDetail, false},
            Row{"another key", R"({"PermissionRequest":[{"hooks":[{BARE,"note":1}]}]})",
                State::review, changedDetail, false, true},
            Row{"foreign key of the group", R"({"PermissionRequest":[{"hooks":[OWN],"note":1}]})",
                State::review, changedDetail, false, true},
            Row{"other event", R"({"UserPromptSubmit":[{"hooks":[OWN]}]})", State::review,
                changedDetail, false},
            Row{"foreign only",
                R"({"PermissionRequest":[{"hooks":[{"type":"command","command":"x"}]}]})",
                State::missing, noneDetail, false},
            Row{"empty", "{}", State::missing, noneDetail, false},
            Row{"fault", R"({"Stop":1})", State::invalid,
                "Hook 事件必须包含分组数组。 仅读取，未修改配置。", std::nullopt},
            Row{"no object", "[]", State::invalid, "hooks 必须是 JSON 对象。 仅读取，未修改配置。",
                std::nullopt},
        }) {
        const SettingsFile settings(withOwnEntries(std::string(R"({"hooks":)") + row.hooks + "}"));
        EXPECT_EQ(inspect(settings),
            (SettingsHookConfiguration{row.state, row.detail, row.interceptBash}))
            << row.name << ": " << inspect(settings).detail;
        EXPECT_EQ(holdsApprovalHook(FileSystem::real(), settings.url(), ownExecutable,
                      QuillMossProfile::quillmoss),
            row.configured)
            << row.name;
    }
}

TEST(SettingsHookConfiguration, judgesFilesWithoutHooks)
{
    const auto ending = std::string(" 仅读取，未修改配置。");
    for (const auto& [text, expected] : {
             std::pair{"{}", SettingsHookConfiguration{State::missing,
                                 "未发现本应用的 PermissionRequest 配置。", false}},
             std::pair{"[]", SettingsHookConfiguration{State::invalid,
                                 "settings.json 必须是 JSON 对象。" + ending, {}}},
             std::pair{"{", SettingsHookConfiguration{State::invalid,
                                "settings.json 不是合法 JSON。" + ending, {}}},
         })
        EXPECT_EQ(inspect(SettingsFile(text)), expected) << text;

    const SettingsFile none;
    const auto missing = SettingsHookConfiguration{
        State::missing, "尚无 settings.json；确认安装后才会创建。", false};
    EXPECT_EQ(inspect(none), missing);
    EXPECT_EQ(SettingsHookConfiguration::inspect(
                  none.directory() + "/none/settings.json", "/a/N", QuillMossProfile::quillmoss),
        missing);
    EXPECT_TRUE(std::filesystem::is_empty(none.directory()));
}

} // namespace
} // namespace notch
