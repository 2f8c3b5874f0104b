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

using Arguments = std::vector<std::string>;
using Ending = ChildProcess::Ending;

const Ending silence{0, "", ""};
const Ending configureUsage{
    1, "", "Usage: QuillMossNotch --configure quillmoss|quillmossAI [--apply|--remove]\n"};
const Ending completionUsage{1, "", "Usage: --configure-completion --apply|--remove\n"};
const Ending completionPreviewUsage{1, "", "Usage: --render-completion-preview <new.png>\n"};
const Ending questionPreviewUsage{1, "",
    "Usage: QuillMossNotch --render-question-preview <new.png> [--question-long] "
    "[--question-failure]\n"};

// What the stub of the window module answers.
Ending entered(WindowMode mode, const Arguments& arguments)
{
    auto output = "mode " + std::to_string(static_cast<int>(mode));
    for (const auto& argument : arguments)
        output += " " + argument;
    return {42, output + "\n", ""};
}

// The program as it is installed, under a prefix that it has not been told.
class EntryTable : public testing::Test {
protected:
    EntryTable()
    {
        files::create_directories(files::path(program).parent_path());
        files::create_directories(files::path(module).parent_path());
        files::copy_file(PROGRAM_PATH, program);
    }

    TemporaryDirectory prefix;
    std::string program = prefix / "bin/QuillMossNotch";
    std::string module = prefix / "lib/quillmoss-notch/NotchWindow.so";
};

// In the order of the program's own table; a row with two flags shows who goes first. None needs
// the window module, which is not there.
TEST_F(EntryTable, answersByItself)
{
    for (const auto& [arguments, ending] : std::vector<std::pair<Arguments, Ending>>{
             {{"--test-transport-identity"}, {0, "production\n", ""}},
             {{"--test-transport-identity", "--completion-hook"}, silence},
             {{"--completion-hook", "--configure-completion"}, silence},
             {{"--configure-completion"}, completionUsage},
             {{"--configure-completion", "--apply", "--remove"}, completionUsage},
             {{"--apply", "--configure-completion"}, completionUsage},
             {{"--configure-completion", "--Apply"}, completionUsage},
             {{"--configure-completion", "--render-completion-preview"}, completionUsage},
             {{"--render-completion-preview"}, completionPreviewUsage},
             {{"--render-question-preview", "--render-completion-preview"}, completionPreviewUsage},
             {{"--ui-self-test", "--render-question-preview"}, questionPreviewUsage},
             {{"--configure"}, configureUsage},
             {{"--configure", "QuillMoss"}, configureUsage},
             {{"--configure", "--configure", "quillmoss"}, configureUsage},
             {{"--hook", "--configure"}, configureUsage},
             {{"--hook", "--demo"}, silence},
             {{"--version", "--hook"}, silence},
             {{"--version"}, {0, "QuillMossNotch " PROGRAM_VERSION "\n", ""}},
         })
        EXPECT_EQ(runProgram(program, arguments), ending) << testing::PrintToString(arguments);
}

TEST_F(EntryTable, entersTheWindowModuleInTheModeThatTheArgumentsAskFor)
{
    files::copy_file(WINDOW_STUB_PATH, module);
    for (const auto& [arguments, mode] : std::vector<std::pair<Arguments, WindowMode>>{
             {{}, WindowMode::resident},
             {{"--demo", "--preview-idle"}, WindowMode::resident},
             {{"--render-preview", "a.png"}, WindowMode::resident},
             {{"--test-transport-identity", "x"}, WindowMode::resident},
             {{"--Hook", "--hook=x"}, WindowMode::resident},
             {{"--version", "--help"}, WindowMode::resident},
             {{"--render-completion-preview", "a.png"}, WindowMode::renderCompletionPreview},
             {{"--ui-self-test", "--render-question-preview", "a.png", "--question-long"},
                 WindowMode::renderQuestionPreview},
             {{"--native-diagnose", "--ui-self-test"}, WindowMode::uiSelfTest},
             {{"--configure", "--native-diagnose"}, WindowMode::nativeDiagnose},
         })
        EXPECT_EQ(runProgram(program, arguments), entered(mode, arguments));
    // Also with its streams closed: the stub tells by its status that they are open again.
    EXPECT_EQ(
        runProgram("/bin/sh", {"-c", "exec \"$0\" <&- >&- 2>&-", program}), (Ending{42, "", ""}));
}

TEST_F(EntryTable, showsItsUsageForTheOneArgumentThatAsksForIt)
{
    const auto help = runProgram(program, {"--help"});
    EXPECT_TRUE(help.status == 0 && help.errors.empty());
    EXPECT_TRUE(help.output.starts_with("Usage: QuillMossNotch"));
    EXPECT_EQ(runProgram(program, {"-h"}), help);
}

TEST_F(EntryTable, saysInOneLineWhyThereIsNoWindowModule)
{
    for (const bool unfit : {false, true}) {
        if (unfit)
            std::ofstream(module) << "#!/bin/sh";
        const auto ending = runProgram(program);
        EXPECT_EQ(ending.status, 1) << unfit;
        EXPECT_EQ(ending.output, "") << unfit;
        EXPECT_TRUE(ending.errors.starts_with("QuillMossNotch cannot load its window module: "));
        EXPECT_EQ(ending.errors.find('\n'), ending.errors.size() - 1) << unfit;
    }
}

} // namespace
} // namespace notch
