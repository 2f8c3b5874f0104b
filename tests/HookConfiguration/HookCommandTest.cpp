// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "HookConfiguration/HookInstaller.h"

#include <gtest/gtest.h>
#include <vector>

namespace notch {
namespace {

using namespace std::string_literals;

const std::string owned =
    "'/a/QuillMossNotch' '--hook' '--source' 'quillmoss' '--owner-marker' 'quillmoss-notch-v1'";

bool isApproval(const std::string& command)
{
    return HookInstaller::matchesOwnedCommand(
        command, HookInstaller::hookFlag, HookInstaller::ownerMarker);
}

TEST(HookCommand, isSixQuotedWords)
{
    EXPECT_EQ(HookInstaller::approvalCommand("/a/QuillMossNotch", "quillmoss"), owned);
    EXPECT_EQ(HookInstaller::completionCommand("/a b/N", HookInstaller::CompletionVariant::normal),
        "'/a b/N' '--completion-hook' '--source' 'quillmoss' '--owner-marker' "
        "'quillmoss-notch-completion-v1'");
    EXPECT_EQ(HookInstaller::completionCommand("/a/N", HookInstaller::CompletionVariant::probe),
        "'/a/N' '--completion-probe' '--source' 'quillmoss' '--owner-marker' "
        "'quillmoss-notch-completion-probe-v1'");
}

TEST(HookCommand, yieldsThePathBack)
{
    for (const auto* path : {"/Applications/Bob's/QuillMossNotch", "/ends in a quote'", "/'",
             "/''\\''", "/a b\\c\"$`"}) {
        const auto command = HookInstaller::approvalCommand(path, "quillmossAI");
        const auto arguments = HookInstaller::ownedArguments(
            command, HookInstaller::hookFlag, HookInstaller::ownerMarker);
        ASSERT_TRUE(arguments) << command;
        EXPECT_EQ(arguments->front(), path);
    }
    EXPECT_EQ(HookInstaller::shellQuote("/Applications/Bob's/QuillMossNotch"),
        "'/Applications/Bob'\\''s/QuillMossNotch'");
}

TEST(HookCommand, isBuiltForAbsolutePathsAndKnownSourcesOnly)
{
    struct Row {
        const char* name;
        std::string path;
        const char* source;
    };
    for (const auto& row : {
             Row{"no path", "", "quillmoss"},
             Row{"relative path", "a/N", "quillmoss"},
             Row{"URL text", "file:///a/N", "quillmoss"},
             Row{"NUL", "/a\0N"s, "quillmoss"},
             Row{"line feed", "/a\nN", "quillmoss"},
             Row{"line feed behind a carriage return", "/a\r\nN", "quillmoss"},
             Row{"no source", "/a/N", ""},
             Row{"source in another case", "/a/N", "QuillMoss"},
         }) {
        try {
            HookInstaller::approvalCommand(row.path, row.source);
            ADD_FAILURE() << row.name;
        } catch (const HookInstaller::Failure& failure) {
            EXPECT_EQ(failure.message, "需要绝对可执行文件路径和有效的 QuillMoss 来源。");
        }
    }
}

TEST(HookCommand, isForeignInAnyOtherForm)
{
    struct Row {
        const char* name;
        std::string command;
    };
    const auto tail = " '--owner-marker' 'quillmoss-notch-v1'"s;
    for (const auto& row : {
             Row{"empty", ""},
             Row{"one quote", "'"},
             Row{"plain flags", "/a/N --hook --source quillmoss --owner-marker quillmoss-notch-v1"},
             Row{"one plain flag", "'/a/N' --hook '--source' 'quillmoss'" + tail},
             Row{"relative path", "'a/N' '--hook' '--source' 'quillmoss'" + tail},
             Row{"line feed in the path", "'/a\nN' '--hook' '--source' 'quillmoss'" + tail},
             Row{"NUL in the path", "'/a\0N' '--hook' '--source' 'quillmoss'"s + tail},
             Row{"unknown source", "'/a/N' '--hook' '--source' 'other'" + tail},
             Row{"two blanks", "'/a/N'  '--hook' '--source' 'quillmoss'" + tail},
             Row{"five words", "'/a/N' '--hook' '--source' 'quillmoss' '--owner-marker'"},
             Row{"seven words", owned + " 'x'"},
             Row{"trailing blank", owned + " "},
             Row{"empty seventh word", owned + " ''"},
             Row{"quote in the middle of a word, written otherwise",
                 "'/a/''N' '--hook' '--source' 'quillmoss'" + tail},
             Row{"ends inside an escaped quote", owned.substr(0, owned.size() - 1) + "'\\''"},
             Row{"wrapped in a shell", "sh -c \"" + owned + "\""},
         })
        EXPECT_FALSE(isApproval(row.command)) << row.name;
}

// Whatever a person changes in a command makes it theirs. Only the path may differ.
TEST(HookCommand, isForeignOneEditAwayOutsideThePath)
{
    const auto pathEnd = owned.find("' '");
    for (std::size_t at = 0; at < owned.size(); ++at) {
        const bool inPath = at >= 1 && at < pathEnd;
        std::vector<std::string> edits{
            std::string(owned).erase(at, 1), std::string(owned).insert(at, 1, owned[at])};
        for (int byte = 0; byte < 256; ++byte)
            edits.push_back(std::string(owned).replace(at, 1, 1, static_cast<char>(byte)));
        for (const auto& edited : edits) {
            if (edited == owned)
                continue;
            const auto path = edited.substr(1, edited.find("' '") - 1);
            const bool samePathForm =
                inPath && path.starts_with('/') && path.find_first_of("\0\n'"s) == path.npos;
            EXPECT_EQ(isApproval(edited), samePathForm) << edited;
        }
    }
}

TEST(HookCommand, ofATurnEndCarriesTheFirstEdition)
{
    const auto command =
        HookInstaller::completionCommand("/a/N", HookInstaller::CompletionVariant::normal);
    const auto isCompletion = [](const std::string& text) {
        return HookInstaller::matchesOwnedCommand(text, HookInstaller::completionHookFlag,
            HookInstaller::completionOwnerMarker, "quillmoss");
    };
    EXPECT_TRUE(isCompletion(command));
    auto other = command;
    other.insert(other.find("quillmoss'") + 9, "AI");
    EXPECT_FALSE(isCompletion(other));
    EXPECT_FALSE(isApproval(command));
}

} // namespace
} // namespace notch
