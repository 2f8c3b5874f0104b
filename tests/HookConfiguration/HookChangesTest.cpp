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
    std::string own; // The groups that an installation adds, by event.
    const char* editedMessage;
};

const Kind approval{installOwn, uninstallOwn, R"({"PermissionRequest":[{"hooks":[{OWN}]}]})",
    "本应用的 hook 已被手动修改；为避免覆盖更改，操作已停止。"};
const Kind turnEnd{installTurnEnd<Variant::normal>, uninstallTurnEnd,
    R"({"UserPromptSubmit":[{"hooks":[{TURN}]}],"FinalStop":[{"hooks":[{TURN}]}]})",
    "结束提醒 Hook 的选项已被修改，请先手动核对；未覆盖配置。"};
const Kind probe{installTurnEnd<Variant::probe>, uninstallTurnEnd,
    R"({"UserPromptSubmit":[{"hooks":[{TURN_PROBE}]}],"FinalStop":[{"hooks":[{TURN_PROBE}]}]})",
    turnEnd.editedMessage};

Json parsed(const std::string& text)
{
    return Json::parse(withOwnEntries(text)).value();
}

// The whole file around what "hooks" holds; without that key when it holds nothing.
Json document(const std::string& hooks)
{
    const std::string values = R"("key":[-0.0,1.10,1e400,18446744073709551616,0.1e-7,true,null,{},)"
                               R"("\u00e9\/\ud83d\ude00\n",{"z":1,"hooks":[],"a":-1E+2}])";
    return parsed("{" + values + (hooks.empty() ? "" : R"(,"hooks":)" + hooks) + "}");
}

// The kind's own groups after those of the same event.
Json withOwn(Json document, const Kind& kind)
{
    auto& hooks = *document.object()->try_emplace("hooks", Json::Object()).first->second.object();
    const auto own = parsed(kind.own);
    for (const auto& [event, groups] : *own.object()) {
        auto& all = *hooks.try_emplace(event, Json::Array()).first->second.array();
        all.push_back(groups.array()->front());
    }
    return document;
}

// What is equal by value is not written anew.
void expectChange(SettingsChange change, const Json& before, const Json& after)
{
    const SettingsFile settings(before.compact());
    const auto backup = change(settings.url(), WatchedFileSystem());
    EXPECT_EQ(SettingsFile::textOf(backup), before.compact());
    EXPECT_EQ(settings.text(), before == after ? before.compact() : after.pretty() + "\n");
}

TEST(HookChanges, loseOwnEntriesAndNothingElse)
{
    struct Row {
        const char* name;
        const Kind& kind;
        std::string before; // What "hooks" holds.
        std::string kept = {}; // What is left of it without the kind's own entries.
    };
    for (const auto& row :
        {
            Row{"no hooks", approval, ""},
            Row{"empty hooks", approval, "{}"},
            Row{"its own entries, of any copy and edition, also written otherwise", approval,
                R"({"PermissionRequest":[{"hooks":[{OWN_AI},{OWN_MOVED}]},)"
                R"({"hooks":[{OWN,"timeout":6e1}]}]})"},
            Row{"the old form", approval,
                R"({"PreToolUse":[{"hooks":[{OWN_AI}],"matcher":"Bash"},)"
                R"({"hooks":[]},{"hooks":[{OWN},{"type":"x"}],"matcher":"Bash"}]})",
                R"({"PreToolUse":[{"hooks":[]},{"hooks":[{"type":"x"}],"matcher":"Bash"}]})"},
            Row{"between those of others", approval,
                R"({"PermissionRequest":[{"hooks":[]},{"hooks":[{"type":"command","command":)"
                R"("'/a/N' --hook"},{OWN},{"type":"new","timeout":false}]},{"hooks":[]}]})",
                R"({"PermissionRequest":[{"hooks":[]},{"hooks":[{"type":"command","command":)"
                R"("'/a/N' --hook"},{"type":"new","timeout":false}]},{"hooks":[]}]})"},
            Row{"in a group with another's key", approval,
                R"({"PermissionRequest":[{"hooks":[{OWN}],"note":1e999}]})",
                R"({"PermissionRequest":[{"hooks":[],"note":1e999}]})"},
            Row{"in events and of types that are another's", approval,
                R"({"Stop":[{"hooks":[{OWN},{TURN}]}],"PreToolUse":[{"hooks":[{OWN,"type":"x"}]}]})",
                R"({"Stop":[{"hooks":[{OWN},{TURN}]}],"PreToolUse":[{"hooks":[{OWN,"type":"x"}]}]})"},
            Row{"turn ends in place of probes and of another copy's", turnEnd,
                R"({"UserPromptSubmit":[{"hooks":[{TURN_PROBE},{TURN_MOVED}]}],)"
                R"("FinalStop":[{"hooks":[{TURN,"timeout":2.0}]}]})"},
            Row{"probes in place of turn ends", probe, turnEnd.own},
            Row{"turn ends among others", turnEnd,
                R"({"PermissionRequest":[{"hooks":[{OWN}]}],)"
                R"("FinalStop":[{"hooks":[{TURN},{"type":"y"}]},{"hooks":[{"type":"x"}]}]})",
                R"({"PermissionRequest":[{"hooks":[{OWN}]}],)"
                R"("FinalStop":[{"hooks":[{"type":"y"}]},{"hooks":[{"type":"x"}]}]})"},
        }) {
        SCOPED_TRACE(row.name);
        const auto kept = document(row.kept);
        const auto installed = withOwn(kept, row.kind);
        for (const auto& before : {document(row.before), installed, kept}) {
            expectChange(row.kind.install, before, installed);
            expectChange(row.kind.uninstall, before, kept);
        }
    }
}

TEST(HookChanges, leaveAFileWithAnEntryEditedByHand)
{
    for (const auto& [kind, hooks] : {
             std::pair{approval, R"({"PermissionRequest":[{"hooks":[{OWN,"timeout":30}]}]})"},
             std::pair{approval, R"({"PermissionRequest":[{"hooks":[{OWN,"note":null}]}]})"},
             std::pair{approval, R"({"PermissionRequest":[{"hooks":[{OWN}],"matcher":""}]})"},
             std::pair{approval, R"({"PreToolUse":[{"hooks":[{OWN}]}]})"},
             std::pair{approval, R"({"PreToolUse":[{"hooks":[{OWN}],"matcher":"Write"}]})"},
             std::pair{turnEnd, R"({"UserPromptSubmit":[{"hooks":[{TURN,"timeout":5}]}]})"},
             std::pair{probe, R"({"UserPromptSubmit":[{"hooks":[{TURN_PROBE}],"matcher":""}]})"},
             std::pair{turnEnd, R"({"FinalStop":[{"hooks":[{TURN}],"note":null}]})"},
         }) {
        const auto text = document(hooks).compact();
        const SettingsFile settings(text);
        for (const auto change : {kind.install, kind.uninstall}) {
            const auto message = failureOf([&] { change(settings.url(), WatchedFileSystem()); });
            EXPECT_EQ(message, kind.editedMessage) << hooks;
        }
        EXPECT_EQ(settings.text(), text);
        EXPECT_TRUE(settings.backups().empty());
    }
}

} // namespace
} // namespace notch
