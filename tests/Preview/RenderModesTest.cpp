// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchPanel/NotchViewport.h"
#include "Preview/NotchPicture.h"
#include "Rehearsal/Scene.h"
#include "support/PrivateAccount.h"
#include "support/SettingsFile.h"

#include <gtest/gtest.h>

#include <QImage>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace notch {
namespace {

namespace files = std::filesystem;

using Arguments = std::vector<std::string>;
using Ending = ChildProcess::Ending;

// The built program's modes that write a picture, without a display.
class RenderModes : public testing::Test {
protected:
    static Ending run(const Arguments& arguments, const std::string& shell = "")
    {
        // What the toolkit keeps until the process ends would count as leaks.
        const char* const alone = R"(unset DISPLAY; ASAN_OPTIONS=detect_leaks=0 exec "$0" "$@")";
        Arguments words{"-c", shell + alone, PROGRAM_PATH};
        words.insert(words.end(), arguments.begin(), arguments.end());
        return runProgram("/bin/sh", words);
    }
    // What each name in the folder is or leads to.
    std::map<std::string, std::string> contents() const
    {
        std::map<std::string, std::string> all;
        for (const auto& entry : files::directory_iterator(folder.path())) {
            all[entry.path().filename()] = entry.is_symlink()
                                             ? "-> " + files::read_symlink(entry.path()).string()
                                             : SettingsFile::textOf(entry.path());
        }
        return all;
    }
    static QImage picture(const std::string& path) { return QImage(QString::fromStdString(path)); }

    const TemporaryDirectory folder;
};

TEST_F(RenderModes, aReminderIsPicturedInANewFileOrNotAtAll)
{
    std::ofstream(folder / "mine.png") << "mine";
    files::create_symlink("mine.png", folder / "link.png");
    files::create_symlink("nowhere.png", folder / "dangling.png");
    const auto before = contents();
    const Ending question{1, "", "Could not save preview (existing files are not overwritten).\n"};
    const Ending turnEnd{
        1, "", "Could not save completion preview; existing files are not overwritten.\n"};
    for (const auto& [flag, failed] : std::vector<std::pair<std::string, Ending>>{
             {"--render-question-preview", question}, {"--render-completion-preview", turnEnd}}) {
        for (const auto* const name :
            {"mine.png", "link.png", "dangling.png", "none/a.png", "", "new.png/"})
            EXPECT_EQ(run({flag, folder / name}), failed) << name;
        EXPECT_EQ(run({flag, ""}), failed);
        EXPECT_EQ(run({flag, folder / "new.png"}, "ulimit -f 1; "), failed) << "a full disk";
        EXPECT_EQ(contents(), before) << flag;
    }
    EXPECT_EQ(run({"--render-question-preview", folder / "question.png"}),
        (Ending{0,
            "Synthetic question preview saved; no AX, real app activation, approval, or answer.\n",
            ""}));
    EXPECT_EQ(run({"--render-completion-preview", folder / "turn.png"}),
        (Ending{0, "Synthetic completion preview saved; no real task or app activation.\n", ""}));
    EXPECT_EQ(contents().size(), before.size() + 2);
}

// By the words of a scene that shows the same.
TEST_F(RenderModes, showWhatTheirFlagsSay)
{
    const auto path = folder / "a.png";
    for (const auto& [flags, words] : std::vector<std::pair<Arguments, const char*>>{
             {{"--render-completion-preview", path},
                 "on completionRemindersEnabled, turn, wait 0.5"},
             {{"--render-question-preview", path}, "question, wait 0.5"},
             {{"--question-failure", "--render-question-preview", path},
                 "deaf, question, wait 0.5, goAnswer"},
             {{"--render-preview", path}, "demo hook, wait 0.55"},
             {{"--render-preview", path, "--preview-native", "--preview-details"},
                 "demo native, wait 0.55, details"},
             {{"--preview-receipt", "--render-preview", path}, "demo hook, wait 0.55, allow demo"},
             {{"--render-preview", path, "--preview-compact"}, "demo hook, wait 0.55, close"},
         }) {
        Scene scene;
        scene.play(words);
        const bool compact = flags.back() == "--preview-compact";
        scene.model.setWidths(compact ? 240 : 480, 240);
        if (flags.front() != "--render-preview" && flags.front() != "--preview-receipt")
            files::remove(path);
        EXPECT_EQ(run(flags).status, 0) << words;
        EXPECT_EQ(picture(path),
            pictureOfNotch(scene.model, scene.fakes.time).convertToFormat(picture(path).format()))
            << words;
    }
}

// In one, each switch and the style differ from the default, and the host has the hook.
TEST_F(RenderModes, showNothingOfTheAccount)
{
    if (!canWrapAccount())
        GTEST_SKIP() << "no wrapper of the account database";
    const SettingsFile file;
    const PrivateAccount account(file.home());
    std::ofstream(file.home() + "/local.quillmoss.notch.ini")
        << "[General]\nhoverToExpand=false\nautoCollapse=false\nnativeApprovalsEnabled=true\n"
           "questionRemindersEnabled=false\ncompletionRemindersEnabled=true\n";
    const auto runThere = [&](const Arguments& arguments) {
        auto command = account.command(PROGRAM_PATH, arguments);
        command.insert(
            command.begin(), {"QT_STYLE_OVERRIDE=Windows", "XDG_CONFIG_HOME=" + file.home()});
        return runProgram(PrivateAccount::launcher, command).status;
    };
    ASSERT_EQ(runThere({"--configure", "quillmoss", "--apply"}), 0);
    for (const auto* const flag : {"--preview-details", "--preview-settings"}) {
        const auto here = folder / "here.png";
        const auto there = folder / "there.png";
        EXPECT_EQ(run({"--render-preview", here, "--preview-idle", flag}).status, 0);
        EXPECT_EQ(runThere({"--render-preview", there, "--preview-idle", flag}), 0);
        EXPECT_EQ(SettingsFile::textOf(here), SettingsFile::textOf(there)) << flag;
    }
}

TEST(NotchViewport, drawsNothingBelowTheSurfaceAtAnyScale)
{
    for (const double scale : {1.0, 1.25, 1.5, 1.75}) {
        NotchViewport viewport(std::make_unique<QWidget>(), [](double, double) { return 301.0; });
        viewport.resize(479, qRound(viewport.fitContent(479, 800)));
        viewport.setSurface(236, 32);
        QImage picture(QSizeF(479 * scale + 1, 301 * scale + 1).toSize(), QImage::Format_ARGB32);
        picture.setDevicePixelRatio(scale);
        picture.fill(Qt::transparent);
        viewport.render(&picture);
        for (int y = qRound(33 * scale); y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                ASSERT_EQ(qAlpha(picture.pixel(x, y)), 0) << x << ", " << y << " at " << scale;
        }
    }
}

} // namespace
} // namespace notch
