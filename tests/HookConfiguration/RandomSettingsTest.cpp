// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// Documents made at random, with entries of this system strewn among those of others.

#include "HookConfiguration/HookInstaller.h"
#include "support/OwnEntries.h"
#include "support/SettingsFile.h"
#include "support/WatchedFileSystem.h"

#include <array>
#include <gtest/gtest.h>
#include <random>

namespace notch {
namespace {

constexpr std::array values{"-0.0", "1.10", "1e400", "18446744073709551616", "0.1e-7", "true",
    "null", "{}", "[]", R"("\u00e9\/\ud83d\ude00\n")", R"("é/😀")", R"([1,[2,{"b":1,"a":[]}]])",
    R"({"z":1,"hooks":[],"a":-1E+2})"};
constexpr std::array foreignHooks{R"({"type":"command","command":"x --hook","timeout":0.5})",
    R"({"type":"http","url":"","headers":{"k":"v"}})", R"({"type":"new","timeout":false})",
    R"({"type":"command","command":"'/a/N' --hook","note":1e999})"};
constexpr std::array ownHooks{"OWN", "OWN_AI", "OWN_MOVED", R"({BARE,"timeout":6e1})"};
constexpr std::array alteredHooks{
    R"({BARE,"timeout":61})", R"({BARE,"async":true})", R"({BARE,"timeout":true})"};
constexpr std::array events{"PermissionRequest", "PreToolUse", "Stop"};

// The same document twice: as a person and the host left it, and with own entries put into it.
struct Documents {
    std::string foreign;
    std::string withOwn;
    std::string altered; // One own entry is no longer as it was written.
};

class Generator {
public:
    explicit Generator(unsigned seed)
        : random_(seed)
    {
    }

    Documents documents()
    {
        std::string key = R"("key )" + std::to_string(below(3)) + R"(":)" + pick(values);
        Documents made{key, key, key};
        Documents hooks;
        for (const auto* event : events)
            addMember(hooks, event, groups(event));
        addMember(made, "hooks",
            {braced(hooks.foreign), braced(hooks.withOwn), braced(hooks.altered)},
            hooks.foreign.empty());
        for (auto* text : {&made.foreign, &made.withOwn, &made.altered})
            *text = withOwnEntries(braced(*text));
        return made;
    }

private:
    struct Texts {
        std::string foreign, withOwn, altered;
    };

    static std::string braced(const std::string& members) { return "{" + members + "}"; }

    std::size_t below(std::size_t limit) { return random_() % limit; }
    template <class List> std::string pick(const List& list) { return list[below(list.size())]; }

    static void append(std::string& list, const std::string& element)
    {
        list += (list.empty() ? "" : ",") + element;
    }

    // A key without groups is left out, as it would be once the own ones are gone.
    static void addMember(
        Documents& object, const std::string& key, const Texts& value, bool emptyWithoutOwn = false)
    {
        const auto member = [&](const std::string& text) { return '"' + key + "\":" + text; };
        if (value.foreign != "[]" && !emptyWithoutOwn)
            append(object.foreign, member(value.foreign));
        if (value.withOwn != "[]" && value.withOwn != "{}")
            append(object.withOwn, member(value.withOwn));
        if (value.altered != "[]" && value.altered != "{}")
            append(object.altered, member(value.altered));
    }

    Texts groups(const std::string& event)
    {
        Texts list;
        for (auto count = below(4); count > 0; --count) {
            const auto hook = pick(foreignHooks);
            const auto keys = groupKeys(event);
            const bool mixed = canHoldOwn(event, keys) && below(3) == 0;
            append(list.foreign, group(hook, keys));
            append(list.withOwn, group(mixed ? pick(ownHooks) + "," + hook : hook, keys));
            append(list.altered, group(hook, keys));
        }
        if (event != "Stop" && below(2) == 0) {
            const std::string matcher = event == "PreToolUse" ? R"(,"matcher":"Bash")" : "";
            append(list.withOwn, group(pick(ownHooks), matcher));
        }
        if (event == "PermissionRequest")
            append(list.altered, group(pick(alteredHooks), ""));
        return {"[" + list.foreign + "]", "[" + list.withOwn + "]", "[" + list.altered + "]"};
    }
    std::string groupKeys(const std::string& event)
    {
        const std::string matcher = below(2) == 0         ? ""
                                  : event == "PreToolUse" ? R"(,"matcher":"Bash")"
                                                          : R"(,"matcher":"*")";
        return matcher + (below(3) == 0 ? R"(,"note":)" + pick(values) : "");
    }
    static bool canHoldOwn(const std::string& event, const std::string& keys)
    {
        const bool hasMatcher = keys.find("matcher") != keys.npos;
        return event == "PreToolUse" ? hasMatcher : event == "PermissionRequest" && !hasMatcher;
    }
    static std::string group(const std::string& hooks, const std::string& keys)
    {
        return R"({"hooks":[)" + hooks + "]" + keys + "}";
    }

    std::minstd_rand random_;
};

class RandomSettings : public testing::Test {
protected:
    std::string installed(const std::string& text) const
    {
        settings.write(text);
        HookInstaller(files).install(
            settings.url(), ownExecutable, "quillmoss", HookInstaller::InterceptBash::no);
        return settings.text();
    }
    std::string uninstalled(const std::string& text) const
    {
        settings.write(text);
        HookInstaller(files).uninstall(settings.url());
        return settings.text();
    }

    const WatchedFileSystem files{};
    const SettingsFile settings;
};

// The order of arrays is part of their value, so equality shows that foreign hooks keep theirs.
TEST_F(RandomSettings, loseOwnEntriesAndNothingElse)
{
    for (unsigned seed = 1; seed <= 150; ++seed) {
        const auto made = Generator(seed).documents();
        const auto foreign = Json::parse(made.foreign);
        ASSERT_TRUE(foreign) << made.foreign;
        const auto once = installed(made.withOwn);
        EXPECT_EQ(Json::parse(uninstalled(made.withOwn)), foreign) << "seed " << seed;
        EXPECT_EQ(Json::parse(uninstalled(once)), foreign) << "seed " << seed;
        EXPECT_EQ(Json::parse(installed(made.foreign)), Json::parse(once)) << "seed " << seed;
        EXPECT_EQ(installed(once), once) << "seed " << seed;
    }
}

TEST_F(RandomSettings, withAnAlteredEntryStayAsTheyAre)
{
    for (unsigned seed = 1; seed <= 100; ++seed) {
        const auto text = Generator(seed).documents().altered;
        EXPECT_NE(failureOf([&] { installed(text); }), "") << "seed " << seed;
        EXPECT_EQ(settings.text(), text) << "seed " << seed;
        EXPECT_NE(failureOf([&] { uninstalled(text); }), "") << "seed " << seed;
        EXPECT_EQ(settings.text(), text) << "seed " << seed;
    }
    EXPECT_TRUE(settings.backups().empty());
}

} // namespace
} // namespace notch
