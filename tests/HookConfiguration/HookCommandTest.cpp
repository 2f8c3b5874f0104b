// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "HookConfiguration/HookInstaller.h"
#include "support/SettingsFile.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

using namespace std::string_literals;
using Variant = HookInstaller::CompletionVariant;

const std::string owned =
    "'/a/QuillMossNotch' '--hook' '--source' 'quillmoss' '--owner-marker' 'quillmoss-notch-v1'";

std::optional<HookInstaller::CommandArguments> arguments(const std::string& command)
{
    return HookInstaller::ownedArguments(
        command, HookInstaller::hookFlag, HookInstaller::ownerMarker);
}

TEST(HookCommand, isSixQuotedWords)
{
    EXPECT_EQ(HookInstaller::approvalCommand("/a/QuillMossNotch", "quillmoss"), owned);
    EXPECT_EQ(HookInstaller::completionCommand("/a b/N", Variant::normal),
        "'/a b/N' '--completion-hook' '--source' 'quillmoss' '--owner-marker' "
        "'quillmoss-notch-completion-v1'");
    EXPECT_EQ(HookInstaller::completionCommand("/a/N", Variant::probe),
        "'/a/N' '--completion-probe' '--source' 'quillmoss' '--owner-marker' "
        "'quillmoss-notch-completion-probe-v1'");
    EXPECT_EQ(HookInstaller::shellQuote("/Bob's/N"), "'/Bob'\\''s/N'");
}

TEST(HookCommand, yieldsThePathBack)
{
    for (const auto* path : {"/Applications/Bob's/QuillMossNotch", "/ends in a quote'", "/'",
             "/''\\''", "/a b\\c\"$`"}) {
        const auto words = arguments(HookInstaller::approvalCommand(path, "quillmossAI"));
        ASSERT_TRUE(words) << path;
        EXPECT_EQ(words->front(), path);
    }
}

TEST(HookCommand, isBuiltForAbsolutePathsAndKnownSourcesOnly)
{
    const auto message = "需要绝对可执行文件路径和有效的 QuillMoss 来源。";
    for (const auto& [path, source] : {
             std::pair{"a/N"s, "quillmoss"},
             std::pair{"/a\0N"s, "quillmoss"},
             std::pair{"/a\nN"s, "quillmoss"},
             std::pair{"/a\xFF/N"s, "quillmoss"},
             std::pair{"/a/N"s, ""},
             std::pair{"/a/N"s, "QuillMoss"},
         }) {
        const auto build = [&, &p = path, s = source] { HookInstaller::approvalCommand(p, s); };
        EXPECT_EQ(failureOf(build), message) << path << ", " << source;
    }
    EXPECT_EQ(failureOf([] { HookInstaller::completionCommand("N", Variant::normal); }), message);
}

TEST(HookCommand, isForeignInAnyOtherForm)
{
    for (const auto& command : {
             ""s,
             "'"s,
             "/a/N --hook --source quillmoss --owner-marker quillmoss-notch-v1"s,
             "'/a/N' '--hook' '--source' 'other' '--owner-marker' 'quillmoss-notch-v1'"s,
             "'/a/''N'" + owned.substr(owned.find("' '") + 1),
             owned.substr(0, owned.rfind(' ')),
             owned + " ''",
             owned.substr(0, owned.size() - 1) + "'\\''",
             "sh -c \"" + owned + "\"",
         })
        EXPECT_FALSE(arguments(command)) << command;
}

// Whatever a person changes in a command makes it theirs. Only the path may differ.
TEST(HookCommand, isForeignOneEditAwayOutsideThePath)
{
    const auto pathEnd = owned.find("' '");
    for (std::size_t at = 0; at <= owned.size(); ++at) {
        std::vector<std::string> edits{std::string(owned).erase(at, 1)};
        for (int byte = 0; byte < 256; ++byte) {
            edits.push_back(std::string(owned).replace(at, 1, 1, static_cast<char>(byte)));
            edits.push_back(std::string(owned).insert(at, 1, static_cast<char>(byte)));
        }
        for (const auto& edited : edits) {
            if (edited == owned)
                continue;
            const auto path = edited.substr(1, edited.find("' '") - 1);
            const bool samePathForm = at >= 1 && at <= pathEnd && path.starts_with('/')
                                   && path.find_first_of("\0\n'"s) == path.npos;
            EXPECT_EQ(arguments(edited).has_value(), samePathForm) << edited;
        }
    }
}

} // namespace
} // namespace notch
