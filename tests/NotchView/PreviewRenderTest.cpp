// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/PreviewRender.h"
#include "support/FakeOutside.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QTimer>

#include <string>
#include <utility>
#include <vector>

namespace notch {
namespace {

using Arguments = std::vector<std::string>;

// The exit status, and what the picture shows.
std::string rendered(const Arguments& arguments)
{
    FakeOutside outside;
    AppModel model(outside.seams());
    // The buttons are armed at about the time when they are in a launch.
    QObject running;
    QTimer::singleShot(470, &running, [&outside] { outside.time.advance(Seconds{0.47}); });
    const auto options = *PreviewOptions::parse(arguments);
    auto line = std::to_string(PreviewRender(model, outside.time).run(options));
    line += ' ' + std::to_string(QImage(QString::fromStdString(options.path)).width());
    const auto& interaction = model.state().interaction;
    line += model.state().isExpanded() ? " open" : " closed";
    if (const auto* current = interaction.current())
        line += current->isNative() ? " card" : " hook";
    line += interaction.showAllParameters ? " details" : "";
    if (interaction.feedback() && interaction.feedback()->isDemo)
        line += " receipt " + std::to_string(static_cast<int>(interaction.feedback()->kind));
    EXPECT_TRUE(outside.takeCalls("server").empty());
    return line;
}

TEST(PreviewRender, picturesWhatTheFlagsSay)
{
    const TemporaryDirectory directory;
    const auto path = directory.path() + "/a.png";
    for (const auto& [flags, expected] : std::initializer_list<std::pair<Arguments, const char*>>{
             {{"--preview-compact"}, "0 240 closed hook"},
             {{"--preview-native", "--preview-details"}, "0 480 open card details"},
             {{"--preview-receipt"}, "0 480 open receipt 0"},
             {{"--preview-idle", "--preview-settings"}, "0 600 open"},
         }) {
        auto arguments = flags;
        arguments.insert(arguments.begin() + 1, {"--render-preview", path});
        EXPECT_EQ(rendered(arguments), expected) << flags.front();
    }
    EXPECT_EQ(QImage(QString::fromStdString(path)).height(), 680);
}

TEST(PreviewRender, isAskedForByItsFlag)
{
    EXPECT_FALSE(PreviewOptions::parse(Arguments{"--preview-idle"}));
    EXPECT_EQ(PreviewOptions::parse(Arguments{"--render-preview"}), PreviewOptions{});
}

TEST(PreviewRender, saysThatAFileCannotBeWritten)
{
    const TemporaryDirectory directory;
    testing::internal::CaptureStderr();
    EXPECT_EQ(rendered({"--render-preview", directory.path() + "/none/a.png"}), "1 0 open hook");
    const auto line = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(line.starts_with("Preview write failed: ") && line.ends_with('\n')) << line;
}

} // namespace
} // namespace notch
