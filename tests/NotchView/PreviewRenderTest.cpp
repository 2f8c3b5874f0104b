// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/PreviewRender.h"
#include "Platform/MainQueue/QtMainQueue.h"
#include "WidgetTest.h"
#include "support/TemporaryDirectory.h"

#include <QImage>

namespace notch {
namespace {

TEST(PreviewOptions, readsThePathAndTheFlags)
{
    using Arguments = std::vector<std::string>;
    EXPECT_FALSE(PreviewOptions::parse(Arguments{"--preview-idle"}));
    EXPECT_EQ(PreviewOptions::parse(Arguments{"--render-preview"}), PreviewOptions{});
    EXPECT_EQ(PreviewOptions::parse(Arguments{"--preview-native", "--render-preview", "a.png",
                  "--preview-details", "--preview-receipt"}),
        (PreviewOptions{.path = "a.png", .native = true, .details = true, .receipt = true}));
    EXPECT_EQ(PreviewOptions::parse(Arguments{"--render-preview", "a.png", "--preview-idle",
                  "--preview-compact", "--preview-settings"}),
        (PreviewOptions{.path = "a.png", .idle = true, .compact = true, .settings = true}));
}

class PreviewRenderTest : public WidgetTest {
protected:
    // As in a launch: the real clock and event loop, nothing started.
    int run(const PreviewOptions& options)
    {
        QtMainQueue queue;
        const SystemClock clock;
        AppModel fresh({.clock = clock,
            .mainQueue = queue,
            .server = outside.server,
            .nativeMonitor = outside.monitor,
            .reminders = outside.reminders,
            .preferences = outside.preferences,
            .pasteboard = outside.pasteboard,
            .workspace = outside.workspace,
            .configuredProfiles = [] { return std::nullopt; }});
        const int status = PreviewRender(fresh, clock).run(options);
        receipt_ = fresh.state().interaction.feedback();
        return status;
    }

    std::optional<NotchInteraction::Feedback> receipt_;
    TemporaryDirectory directory_;
};

TEST_F(PreviewRenderTest, writesOverAFileAndDecidesNothingOutside)
{
    const auto path = directory_.path() + "/a.png";
    EXPECT_EQ(run({.path = path, .compact = true}), 0);
    EXPECT_EQ(QImage(QString::fromStdString(path)).width(), 240);
    EXPECT_EQ(run({.path = path, .native = true, .receipt = true}), 0);
    EXPECT_EQ(QImage(QString::fromStdString(path)).width(), 480);
    ASSERT_TRUE(receipt_);
    EXPECT_EQ(receipt_->kind, NotchInteraction::Feedback::Kind::allowed);
    EXPECT_EQ(run({.path = path, .idle = true, .settings = true}), 0);
    EXPECT_EQ(QImage(QString::fromStdString(path)).size(), QSize(600, 680));
    EXPECT_EQ(outside.takeCalls("server"), std::vector<std::string>{});
    EXPECT_EQ(outside.takeCalls("monitor"), std::vector<std::string>{});
}

TEST_F(PreviewRenderTest, saysThatAFileCannotBeWritten)
{
    testing::internal::CaptureStderr();
    EXPECT_EQ(run({.path = directory_.path() + "/none/a.png"}), 1);
    const auto line = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(line.starts_with("Preview write failed: ") && line.ends_with('\n')) << line;
}

} // namespace
} // namespace notch
