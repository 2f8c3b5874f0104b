// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Preview/PreviewRender.h"
#include "NotchPanel/NotchViewport.h"
#include "Rehearsal/StartedModel.h"
#include "SettingsView/SettingsHome.h"
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

// The exit status, what is pictured, and the state of the model.
std::string rendered(const Arguments& arguments)
{
    StartedModel started;
    // The buttons are armed at about the time when they are in a launch.
    QObject running;
    QTimer::singleShot(470, &running, [&] { started.fakes.time.advance(Seconds{0.47}); });
    const auto options = *PreviewOptions::parse(arguments);
    SettingsHome home;
    const int status =
        PreviewRender(started.model, started.fakes.time, home.surroundings()).run(options);
    const QImage picture(QString::fromStdString(options.path));
    const auto* current = started.interaction().current();
    return std::to_string(status) + ' ' + std::to_string(picture.width())
         + (current && current->isNative() ? " card " : " ") + started.after("");
}

TEST(PreviewRender, picturesWhatTheFlagsSay)
{
    const TemporaryDirectory directory;
    const auto path = directory.path() + "/a.png";
    for (const auto& [flags, expected] : std::initializer_list<std::pair<Arguments, const char*>>{
             {{"--preview-compact"}, "0 240 closed [demo] trying"},
             {{"--preview-native", "--preview-details"},
                 "0 480 card open [demo] armed details trying"},
             {{"--preview-receipt"}, "0 480 open receipt allowed demo"},
             {{"--preview-idle", "--preview-settings"}, "0 600 open"},
         }) {
        auto arguments = flags;
        arguments.insert(arguments.begin() + 1, {"--render-preview", path});
        EXPECT_EQ(rendered(arguments), expected) << flags.front();
    }
    EXPECT_EQ(QImage(QString::fromStdString(path)).height(), 680);
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

TEST(PreviewRender, isAskedForByItsFlag)
{
    EXPECT_FALSE(PreviewOptions::parse(Arguments{"--preview-idle"}));
    EXPECT_EQ(PreviewOptions::parse(Arguments{"--render-preview"}), PreviewOptions{});
}

TEST(PreviewRender, saysThatAFileCannotBeWritten)
{
    const TemporaryDirectory directory;
    testing::internal::CaptureStderr();
    EXPECT_EQ(rendered({"--render-preview", directory.path() + "/none/a.png"}),
        "1 0 open [demo] armed trying");
    const auto line = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(line.starts_with("Preview write failed: ") && line.ends_with('\n')) << line;
}

} // namespace
} // namespace notch
