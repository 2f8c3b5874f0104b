// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// Documents made at random, with entries of both kinds strewn among those of others: either kind
// comes and goes, and everything else keeps its value and its place.

#include "support/SettingsFile.h"
#include "support/WatchedFileSystem.h"

#include <gtest/gtest.h>
#include <random>
#include <regex>

namespace notch {
namespace {

using Texts = std::vector<std::string>;

const Texts values{"-0.0", "1.10", "1e400", "18446744073709551616", "0.1e-7", "true", "null", "{}",
    "[]", R"("\u00e9\/\ud83d\ude00\n")", R"("é/😀")", R"([1,[2,{"b":1,"a":[]}]])",
    R"({"z":1,"hooks":[],"a":-1E+2})"};
const Texts hooksOfOthers{
    R"({"type":"command","command":"x --hook","timeout":0.5})",
    R"({"type":"http","url":"","headers":{"k":"v"}})",
    R"({"type":"new","timeout":false})",
    R"({"type":"command","command":"'/a/N' --hook","note":1e999})",
    R"({OWN,"type":"prompt"})",
    R"({"type":"command","command":"'/a/N' '--completion-hook' '--source' 'quillmossAI' )"
    R"('--owner-marker' 'quillmoss-notch-completion-v1'"})",
};
const Texts events{"PermissionRequest", "PreToolUse", "UserPromptSubmit", "FinalStop", "Stop"};
// By event; "": any. What stands in <> goes with the approval hooks, in ~~ with the turn-end hooks.
const std::vector<std::pair<std::string, std::string>> groups{
    {"", R"({"hooks":[]},)"},
    {"", R"({"hooks":[],"matcher":"Bash"},)"},
    {"", R"({"hooks":[HOOK,HOOK],"matcher":"*","note":VALUE},)"},
    {"PermissionRequest", R"(<{"hooks":[{OWN}]},>)"},
    {"PermissionRequest", R"(<{"hooks":[{OWN_AI},{OWN_MOVED}]},>)"},
    {"PermissionRequest", R"({"hooks":[<{OWN,"timeout":6e1}>],"note":VALUE},)"},
    {"PermissionRequest", R"({"hooks":[HOOK,<{OWN},>HOOK]},)"},
    {"PreToolUse", R"(<{"hooks":[{OWN_AI}],"matcher":"Bash"},>)"},
    {"PreToolUse", R"({"hooks":[<{OWN},>HOOK],"matcher":"Bash"},)"},
    {"UserPromptSubmit", R"(~{"hooks":[{TURN}]},~)"},
    {"UserPromptSubmit", R"(~{"hooks":[{TURN_PROBE},{TURN_MOVED}]},~)"},
    {"FinalStop", R"(~{"hooks":[{TURN,"timeout":2.0}]},~)"},
    {"FinalStop", R"({"hooks":[HOOK,~{TURN},~HOOK]},)"},
    {"Stop", R"({"hooks":[{OWN},{TURN}]},)"},
};

struct Kind {
    SettingsChange install, uninstall;
    const char* gone; // What goes with it.
    const char* events; // They go when they are left without groups.
    std::string installed; // By event, the group that an installation adds.
    const char* editedMessage;
    Texts edited; // Own groups edited by hand.
};

template <HookInstaller::CompletionVariant variant>
std::string installTurnEnd(const std::string& url, const FileSystem& files)
{
    return HookInstaller(files).installCompletion(url, ownExecutable, variant);
}

std::string uninstallTurnEnd(const std::string& url, const FileSystem& files)
{
    return HookInstaller(files).uninstallCompletion(url);
}

std::vector<Kind> kinds()
{
    const Kind approval{
        installOwn,
        uninstallOwn,
        "<[^>]*>",
        "PermissionRequest|PreToolUse",
        R"({"PermissionRequest":{"hooks":[{OWN}]}})",
        "本应用的 hook 已被手动修改；为避免覆盖更改，操作已停止。",
        {
            R"({"PermissionRequest":{"hooks":[{OWN,"timeout":30}]}})",
            R"({"PermissionRequest":{"hooks":[{OWN,"note":null}]}})",
            R"({"PermissionRequest":{"hooks":[{OWN}],"matcher":""}})",
            R"({"PreToolUse":{"hooks":[{OWN}]}})",
            R"({"PreToolUse":{"hooks":[{OWN}],"matcher":"Write"}})",
        },
    };
    const Kind turnEnd{
        installTurnEnd<HookInstaller::CompletionVariant::normal>,
        uninstallTurnEnd,
        "~[^~]*~",
        "UserPromptSubmit|FinalStop",
        R"({"UserPromptSubmit":{"hooks":[{TURN}]},"FinalStop":{"hooks":[{TURN}]}})",
        "结束提醒 Hook 的选项已被修改，请先手动核对；未覆盖配置。",
        {
            R"({"UserPromptSubmit":{"hooks":[{TURN,"timeout":5}]}})",
            R"({"UserPromptSubmit":{"hooks":[{TURN_PROBE}],"matcher":""}})",
            R"({"FinalStop":{"hooks":[{TURN}],"note":null}})",
        },
    };
    auto probe = turnEnd;
    probe.install = installTurnEnd<HookInstaller::CompletionVariant::probe>;
    probe.installed = std::regex_replace(turnEnd.installed, std::regex("TURN"), "TURN_PROBE");
    return {approval, turnEnd, probe};
}

class Generator {
public:
    explicit Generator(unsigned seed)
        : random_(seed)
    {
    }

    // In the notation of the groups, with a comma behind each element.
    std::string document()
    {
        std::string hooks;
        for (const auto& event : events)
            if (below(3) > 0)
                hooks += '"' + event + "\":[" + groupsOf(event) + "],";
        auto text = R"({"key":VALUE,"hooks":{)" + hooks + "},}";
        fill(text, "HOOK", hooksOfOthers);
        fill(text, "VALUE", values);
        return text;
    }

private:
    template <class List> const auto& pick(const List& list) { return list[below(list.size())]; }
    std::size_t below(std::size_t limit) { return random_() % limit; }
    std::string groupsOf(const std::string& event)
    {
        std::string list;
        for (auto count = below(8); count > 0; --count)
            if (const auto& [where, group] = pick(groups); where.empty() || where == event)
                list += group;
        return list;
    }
    void fill(std::string& text, const std::string& word, const Texts& list)
    {
        for (auto at = text.find(word); at != text.npos; at = text.find(word))
            text.replace(at, word.size(), pick(list));
    }

    std::minstd_rand random_;
};

std::string without(const std::string& text, const std::string& pattern)
{
    return std::regex_replace(text, std::regex(pattern), "");
}

Json parsed(const std::string& document)
{
    const auto last = without(without(document, "[<>~]"), R"(,(?=[\]}]))");
    return Json::parse(withOwnEntries(last)).value();
}

Json pruned(const std::string& document, const Kind& kind)
{
    const auto rest = without(without(document, kind.gone), "[<>~]");
    const auto emptyEvents = std::string("\"(") + kind.events + ")\":\\[\\],";
    return parsed(without(without(rest, emptyEvents), R"("hooks":\{\},)"));
}

// Each group at the end of its event's.
Json withGroups(Json document, const std::string& byEvent)
{
    auto& root = *document.object();
    auto& hooks = *root.try_emplace("hooks", Json::Object()).first->second.object();
    const auto added = parsed(byEvent);
    for (const auto& [event, group] : *added.object())
        hooks.try_emplace(event, Json::Array()).first->second.array()->push_back(group);
    return document;
}

class RandomSettings : public testing::Test {
protected:
    // What is equal by value is not written anew.
    void expectChange(SettingsChange change, const Json& before, const Json& after) const
    {
        settings.write(before.compact());
        const auto backup = change(settings.url(), files);
        EXPECT_EQ(SettingsFile::textOf(backup), before.compact());
        EXPECT_EQ(settings.text(), before == after ? before.compact() : after.pretty() + "\n");
    }

    const WatchedFileSystem files{};
    const SettingsFile settings;
};

TEST_F(RandomSettings, loseOwnEntriesAndNothingElse)
{
    for (const auto& kind : kinds())
        for (unsigned seed = 1; seed <= 80; ++seed) {
            const auto document = Generator(seed).document();
            SCOPED_TRACE(testing::Message() << "seed " << seed << ": " << document);
            const auto uninstalled = pruned(document, kind);
            const auto installed = withGroups(uninstalled, kind.installed);
            for (const auto& before : {parsed(document), uninstalled, installed}) {
                expectChange(kind.install, before, installed);
                expectChange(kind.uninstall, before, uninstalled);
            }
        }
}

TEST_F(RandomSettings, withAnEntryEditedByHandStayAsTheyAre)
{
    for (const auto& kind : kinds())
        for (const auto& edited : kind.edited)
            for (unsigned seed = 1; seed <= 10; ++seed) {
                const auto document = parsed(Generator(seed).document());
                const auto text = withGroups(document, edited).compact();
                settings.write(text);
                for (const auto change : {kind.install, kind.uninstall})
                    EXPECT_EQ(failureOf([&] { change(settings.url(), files); }), kind.editedMessage)
                        << "seed " << seed << ": " << edited;
                EXPECT_EQ(settings.text(), text);
            }
    EXPECT_TRUE(settings.backups().empty());
}

} // namespace
} // namespace notch
