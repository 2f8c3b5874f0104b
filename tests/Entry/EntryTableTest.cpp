// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "support/ChildProcess.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

constexpr const char* configureUsage =
    "Usage: QuillMossNotch --configure quillmoss|quillmossAI [--apply|--remove]\n";
constexpr const char* completionUsage = "Usage: --configure-completion --apply|--remove\n";
constexpr const char* completionPreviewUsage = "Usage: --render-completion-preview <new.png>\n";
constexpr const char* questionPreviewUsage =
    "Usage: QuillMossNotch --render-question-preview <new.png> [--question-long] "
    "[--question-failure]\n";

struct Row {
    std::vector<std::string> arguments;
    int status;
    const char* output;
    const char* errors;
};

class EntryTable : public testing::TestWithParam<Row> { };

TEST_P(EntryTable, answers)
{
    const auto& row = GetParam();
    const auto ending = runProgram(PROGRAM_PATH, row.arguments);
    EXPECT_EQ(ending.status, row.status);
    EXPECT_EQ(ending.output, row.output);
    EXPECT_EQ(ending.errors, row.errors);
}

// In the order of the program's own table; a row with two flags shows who goes first.
INSTANTIATE_TEST_SUITE_P(Rows, EntryTable,
    testing::Values(Row{{"--test-transport-identity"}, 0, "production\n", ""},
        Row{{"--test-transport-identity", "--completion-hook"}, 0, "", ""},
        Row{{"--completion-hook"}, 0, "", ""},
        Row{{"--completion-hook", "--configure-completion"}, 0, "", ""},
        Row{{"--hook", "--completion-hook"}, 0, "", ""},
        Row{{"--configure-completion"}, 1, "", completionUsage},
        Row{{"--configure-completion", "--apply", "--remove"}, 1, "", completionUsage},
        Row{{"--apply", "--configure-completion"}, 1, "", completionUsage},
        Row{{"--configure-completion", "--Apply"}, 1, "", completionUsage},
        Row{{"--configure-completion", "--render-completion-preview"}, 1, "", completionUsage},
        Row{{"--render-completion-preview"}, 1, "", completionPreviewUsage},
        Row{{"--render-question-preview", "--render-completion-preview"}, 1, "",
            completionPreviewUsage},
        Row{{"--render-question-preview"}, 1, "", questionPreviewUsage},
        Row{{"--ui-self-test", "--render-question-preview"}, 1, "", questionPreviewUsage},
        Row{{"--configure"}, 1, "", configureUsage},
        Row{{"--configure", "unknown"}, 1, "", configureUsage},
        Row{{"--configure", "QuillMoss"}, 1, "", configureUsage},
        Row{{"--configure", "quillmoss "}, 1, "", configureUsage},
        Row{{"--configure", "--configure", "quillmoss"}, 1, "", configureUsage},
        Row{{"--hook", "--configure"}, 1, "", configureUsage}, Row{{"--hook"}, 0, "", ""},
        Row{{"--hook", "--hook"}, 0, "", ""}, Row{{"--hook", "--demo"}, 0, "", ""}));

} // namespace
} // namespace notch
