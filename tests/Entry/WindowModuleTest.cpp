// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "WindowModule.h"
#include "support/ChildProcess.h"
#include "support/TemporaryDirectory.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace notch {
namespace {

namespace files = std::filesystem;

// The program as it is installed, under a prefix that nobody told it.
class WindowModuleTest : public testing::Test {
protected:
    WindowModuleTest()
    {
        files::create_directories(files::path(program).parent_path());
        files::create_directories(files::path(module).parent_path());
        files::copy_file(PROGRAM_PATH, program);
    }

    TemporaryDirectory prefix;
    std::string program = prefix / "bin/QuillMossNotch";
    std::string module = prefix / "lib/quillmoss-notch/NotchWindow.so";
};

TEST_F(WindowModuleTest, isEnteredInTheModeThatTheArgumentsAskFor)
{
    struct Row {
        std::vector<std::string> arguments;
        WindowMode mode;
    };
    files::copy_file(WINDOW_STUB_PATH, module);
    for (const auto& row : {
             Row{{}, WindowMode::resident},
             Row{{"--demo", "--preview-idle"}, WindowMode::resident},
             Row{{"--render-preview", "a.png"}, WindowMode::resident},
             Row{{"--unknown"}, WindowMode::resident},
             Row{{"--test-transport-identity", "x"}, WindowMode::resident},
             Row{{"--completion-probe"}, WindowMode::resident},
             Row{{"--Hook"}, WindowMode::resident},
             Row{{"--hook=x"}, WindowMode::resident},
             Row{{"--render-completion-preview", "a.png"}, WindowMode::renderCompletionPreview},
             Row{{"x", "--render-question-preview", "a.png", "--question-long"},
                 WindowMode::renderQuestionPreview},
             Row{{"--hook", "--ui-self-test"}, WindowMode::uiSelfTest},
             Row{{"--configure", "--native-diagnose"}, WindowMode::nativeDiagnose},
         }) {
        auto expected = "mode " + std::to_string(static_cast<int>(row.mode));
        for (const auto& argument : row.arguments)
            expected += " " + argument;
        const auto ending = runProgram(program, row.arguments);
        EXPECT_EQ(ending.output, expected + "\n");
        EXPECT_EQ(ending.status, 42) << expected;
        EXPECT_EQ(ending.errors, "") << expected;
    }
}

TEST_F(WindowModuleTest, isMissedInOneLine)
{
    struct Row {
        const char* name;
        const char* content; // Null: no file.
    };
    for (const auto& row :
        {Row{"missing", nullptr}, Row{"empty", ""}, Row{"no library", "#!/bin/sh"}}) {
        if (row.content)
            std::ofstream(module) << row.content;
        const auto ending = runProgram(program);
        EXPECT_EQ(ending.status, 1) << row.name;
        EXPECT_EQ(ending.output, "") << row.name;
        EXPECT_EQ(ending.errors.find("QuillMossNotch cannot load its window module: "), 0U)
            << row.name;
        EXPECT_EQ(ending.errors.find('\n'), ending.errors.size() - 1) << row.name;
    }
}

TEST_F(WindowModuleTest, isNoConcernOfAHook)
{
    std::ofstream(module) << "no library";
    const auto ending = runProgram(program, {"--hook"}, "{}");
    EXPECT_EQ(ending.status, 0);
    EXPECT_EQ(ending.output + ending.errors, "");
}

} // namespace
} // namespace notch
