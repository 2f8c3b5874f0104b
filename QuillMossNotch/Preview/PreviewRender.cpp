// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Preview/PreviewRender.h"

#include "Preview/NotchPicture.h"
#include "SettingsView/SettingsPage.h"

#include <QEventLoop>
#include <QFile>
#include <QImageWriter>
#include <QTimer>

#include <algorithm>
#include <array>
#include <cstdio>

namespace notch {
namespace {

constexpr double compactPreviewWidth = 240;
constexpr int settlingMilliseconds = 550;
constexpr QSize settingsSize{600, 680};

struct Flag {
    const char* name;
    bool PreviewOptions::*option;
};

constexpr std::array flags{
    Flag{"--preview-idle", &PreviewOptions::idle},
    Flag{"--preview-native", &PreviewOptions::native},
    Flag{"--preview-details", &PreviewOptions::details},
    Flag{"--preview-receipt", &PreviewOptions::receipt},
    Flag{"--preview-compact", &PreviewOptions::compact},
    Flag{"--preview-settings", &PreviewOptions::settings},
};

void settle()
{
    QEventLoop loop;
    QTimer::singleShot(settlingMilliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

QImage pictureOfSettings(AppModel& model, const HookFlow::Surroundings& hookFiles)
{
    SettingsPage page(model, hookFiles);
    page.lookAgain();
    page.resize(settingsSize);
    return pictureOf(page);
}

int written(const QImage& picture, const std::string& path)
{
    QImageWriter writer(QFile::decodeName(path.c_str()), "png");
    if (writer.write(picture))
        return 0;
    const auto line = "Preview write failed: " + writer.errorString().toStdString() + '\n';
    std::fputs(line.c_str(), stderr);
    return 1;
}

} // namespace

std::optional<PreviewOptions> PreviewOptions::parse(std::span<const std::string> arguments)
{
    const auto render = std::ranges::find(arguments, "--render-preview");
    if (render == arguments.end())
        return std::nullopt;
    PreviewOptions options;
    if (std::next(render) != arguments.end())
        options.path = *std::next(render);
    for (const auto& [name, option] : flags)
        options.*option = std::ranges::find(arguments, name) != arguments.end();
    return options;
}

int PreviewRender::run(const PreviewOptions& options)
{
    model_.setWidths(maximumPanelWidth, compactPreviewWidth);
    startState(options);
    settle();
    applyFlags(options);
    const auto picture =
        options.settings ? pictureOfSettings(model_, hookFiles_) : pictureOfNotch(model_, clock_);
    return written(picture, options.path);
}

void PreviewRender::startState(const PreviewOptions& options)
{
    if (options.idle) {
        model_.refreshConfiguredProfiles();
        model_.expand();
    } else {
        model_.showDemo(options.native ? Demo::native : Demo::hook);
    }
}

void PreviewRender::applyFlags(const PreviewOptions& options)
{
    if (options.details)
        model_.setShowAllParameters(true);
    if (const auto* request = model_.state().interaction.current(); request && options.receipt)
        model_.decide(ApprovalRequest(*request), Decision::allow);
    if (options.compact) {
        model_.collapse();
        model_.setWidths(compactPreviewWidth, compactPreviewWidth);
    }
}

} // namespace notch
