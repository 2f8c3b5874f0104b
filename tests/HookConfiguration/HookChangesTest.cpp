// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// What comes and goes with each kind of hook, and what keeps its value and its place.

#include "support/SettingsFile.h"
#include "support/WatchedFileSystem.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

using Variant = HookInstaller::CompletionVariant;

template <Variant variant>
std::string installTurnEnd(const std::string& url, const FileSystem& files)
{
    return HookInstaller(files).installCompletion(url, ownExecutable, variant);
}

std::string uninstallTurnEnd(const std::string& url, const FileSystem& files)
{
    return HookInstaller(files).uninstallCompletion(url);
}

struct Kind {
    SettingsChange install;
    SettingsChange uninstall;
};

const Kind approval{installOwn, uninstallOwn};
const Kind turnEnd{installTurnEnd<Variant::normal>, uninstallTurnEnd};
const Kind probe{installTurnEnd<Variant::probe>, uninstallTurnEnd};

Json parsed(const std::string& text)
{
    return Json::parse(withOwnEntries(text)).value();
}

// What is equal by value is not written anew.
void expectChange(SettingsChange change, const Json& before, const Json& after)
{
    const SettingsFile settings(before.compact());
    const auto backup = change(settings.url(), WatchedFileSystem());
    EXPECT_EQ(SettingsFile::textOf(backup), before.compact());
    EXPECT_EQ(settings.text(), before == after ? before.compact() : after.pretty() + "\n");
}

struct Row {
    const char* name;
    Kind kind;
    std::string before; // What "hooks" holds; with a leading comma: and what follows it.
    std::string installed;
    std::string uninstalled = {}; // Nothing: no "hooks" at all.
};

constexpr auto values = R"("key":[-0.0,1.10,1e400,18446744073709551616,0.1e-7,true,null,{},)"
                        R"("\u00e9\/\ud83d\ude00\n",{"z":1,"hooks":[],"a":-1E+2}])";

std::string document(const std::string& hooks)
{
    return std::string("{") + values + (hooks.empty() ? "" : R"(,"hooks":)" + hooks) + "}";
}

TEST(HookChanges, loseOwnEntriesAndNothingElse)
{
    const std::string own = R"({"PermissionRequest":[{"hooks":[{OWN}]}]})";
    const std::string turns =
        R"({"UserPromptSubmit":[{"hooks":[{TURN}]}],"FinalStop":[{"hooks":[{TURN}]}]})";
    const std::string probes =
        R"({"UserPromptSubmit":[{"hooks":[{TURN_PROBE}]}],"FinalStop":[{"hooks":[{TURN_PROBE}]}]})";
    const std::string other = R"({"type":"command","command":"'/a/N' --hook","timeout":0.5})";
    for (const auto& row : std::vector<Row>{
             {"no hooks", approval, "", own},
             {"empty hooks", approval, "{}", own},
             {"its own entry, of any copy and edition, also written otherwise", approval,
                 R"({"PermissionRequest":[{"hooks":[{OWN_AI},{OWN_MOVED}]},)"
                 R"({"hooks":[{OWN,"timeout":6e1}]}]})",
                 own},
             {"the old form", approval,
                 R"({"PreToolUse":[{"hooks":[{OWN_AI}],"matcher":"Bash"},)"
                 R"({"hooks":[]},{"hooks":[{OWN},{"type":"x"}],"matcher":"Bash"}]})",
                 R"({"PreToolUse":[{"hooks":[]},{"hooks":[{"type":"x"}],"matcher":"Bash"}],)"
                 R"("PermissionRequest":[{"hooks":[{OWN}]}]})",
                 R"({"PreToolUse":[{"hooks":[]},{"hooks":[{"type":"x"}],"matcher":"Bash"}]})"},
             {"between those of others", approval,
                 R"({"PermissionRequest":[{"hooks":[]},{"hooks":[)" + other
                     + R"(,{OWN},{"type":"new","timeout":false}]},{"hooks":[],"matcher":"*"}]})",
                 R"({"PermissionRequest":[{"hooks":[]},{"hooks":[)" + other
                     + R"(,{"type":"new","timeout":false}]},{"hooks":[],"matcher":"*"},)"
                       R"({"hooks":[{OWN}]}]})",
                 R"({"PermissionRequest":[{"hooks":[]},{"hooks":[)" + other
                     + R"(,{"type":"new","timeout":false}]},{"hooks":[],"matcher":"*"}]})"},
             {"in a group with a key of somebody else's", approval,
                 R"({"PermissionRequest":[{"hooks":[{OWN}],"note":1e999}]})",
                 R"({"PermissionRequest":[{"hooks":[],"note":1e999},{"hooks":[{OWN}]}]})",
                 R"({"PermissionRequest":[{"hooks":[],"note":1e999}]})"},
             {"events and types that it does not look at", approval,
                 R"({"Stop":[{"hooks":[{OWN},{TURN}]}],)"
                 R"("PreToolUse":[{"hooks":[{OWN,"type":"prompt"}]}]})",
                 R"({"Stop":[{"hooks":[{OWN},{TURN}]}],)"
                 R"("PreToolUse":[{"hooks":[{OWN,"type":"prompt"}]}],)"
                 R"("PermissionRequest":[{"hooks":[{OWN}]}]})",
                 R"({"Stop":[{"hooks":[{OWN},{TURN}]}],)"
                 R"("PreToolUse":[{"hooks":[{OWN,"type":"prompt"}]}]})"},
             {"turn ends in nothing", turnEnd, "", turns},
             {"turn ends in place of probes and of another copy's", turnEnd,
                 R"({"UserPromptSubmit":[{"hooks":[{TURN_PROBE},{TURN_MOVED}]}],)"
                 R"("FinalStop":[{"hooks":[{TURN,"timeout":2.0}]}]})",
                 turns},
             {"probes in place of turn ends", probe, turns, probes},
             {"turn ends among others", turnEnd,
                 R"({"PermissionRequest":[{"hooks":[{OWN}]}],"FinalStop":[{"hooks":[{TURN},)"
                     + other + R"(]},{"hooks":[{"type":"x"}]}]})",
                 R"({"PermissionRequest":[{"hooks":[{OWN}]}],"FinalStop":[{"hooks":[)" + other
                     + R"(]},{"hooks":[{"type":"x"}]},{"hooks":[{TURN}]}],)"
                       R"("UserPromptSubmit":[{"hooks":[{TURN}]}]})",
                 R"({"PermissionRequest":[{"hooks":[{OWN}]}],"FinalStop":[{"hooks":[)" + other
                     + R"(]},{"hooks":[{"type":"x"}]}]})"},
         }) {
        SCOPED_TRACE(row.name);
        const auto installed = parsed(document(row.installed));
        const auto uninstalled = parsed(document(row.uninstalled));
        for (const auto& before : {parsed(document(row.before)), installed, uninstalled}) {
            expectChange(row.kind.install, before, installed);
            expectChange(row.kind.uninstall, before, uninstalled);
        }
    }
}

TEST(HookChanges, leaveAFileWithAnEntryEditedByHand)
{
    const auto approvalMessage = "本应用的 hook 已被手动修改；为避免覆盖更改，操作已停止。";
    const auto turnEndMessage = "结束提醒 Hook 的选项已被修改，请先手动核对；未覆盖配置。";
    for (const auto& [kind, hooks, message] : {
             std::tuple{approval, R"({"PermissionRequest":[{"hooks":[{OWN,"timeout":30}]}]})",
                 approvalMessage},
             std::tuple{approval, R"({"PermissionRequest":[{"hooks":[{OWN,"note":null}]}]})",
                 approvalMessage},
             std::tuple{approval, R"({"PermissionRequest":[{"hooks":[{OWN}],"matcher":""}]})",
                 approvalMessage},
             std::tuple{approval, R"({"PreToolUse":[{"hooks":[{OWN}]}]})", approvalMessage},
             std::tuple{approval, R"({"PreToolUse":[{"hooks":[{OWN}],"matcher":"Write"}]})",
                 approvalMessage},
             std::tuple{turnEnd, R"({"UserPromptSubmit":[{"hooks":[{TURN,"timeout":5}]}]})",
                 turnEndMessage},
             std::tuple{probe, R"({"UserPromptSubmit":[{"hooks":[{TURN_PROBE}],"matcher":""}]})",
                 turnEndMessage},
             std::tuple{
                 turnEnd, R"({"FinalStop":[{"hooks":[{TURN}],"note":null}]})", turnEndMessage},
         }) {
        const auto text = withOwnEntries(document(hooks));
        const SettingsFile settings(text);
        for (const auto change : {kind.install, kind.uninstall})
            EXPECT_EQ(
                failureOf([&, c = change] { c(settings.url(), WatchedFileSystem()); }), message)
                << hooks;
        EXPECT_EQ(settings.text(), text);
        EXPECT_TRUE(settings.backups().empty());
    }
}

} // namespace
} // namespace notch
