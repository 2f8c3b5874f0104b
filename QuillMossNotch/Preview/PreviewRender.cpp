// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Preview/PreviewRender.h"

#include "Preview/EmptyHome.h"
#include "Preview/NotchPicture.h"
#include "Preview/PictureFile.h"
#include "Preview/PreviewModel.h"
#include "SettingsView/SettingsPage.h"

#include <cstdio>

namespace notch {
namespace {

constexpr Seconds settling{0.55}; // The buttons are armed by then.
constexpr QSize settingsSize{600, 680};

void startState(AppModel& model, const PreviewOptions& options)
{
    if (options.idle) {
        model.refreshConfiguredProfiles();
        model.expand();
    } else {
        model.showDemo(options.native ? Demo::native : Demo::hook);
    }
}

void applyFlags(AppModel& model, const PreviewOptions& options)
{
    if (options.details)
        model.setShowAllParameters(true);
    if (const auto* request = model.state().interaction.current(); request && options.receipt)
        model.decide(ApprovalRequest(*request), Decision::allow);
    if (options.compact) {
        model.collapse();
        model.setWidths(compactPreviewWidth, compactPreviewWidth);
    }
}

QImage pictureOfSettings(AppModel& model, MainQueue& mainQueue)
{
    EmptyHome home;
    SettingsPage page(model, home.surroundings(mainQueue));
    page.lookAgain();
    page.resize(settingsSize);
    return pictureOf(page);
}

} // namespace

int renderPreview(const PreviewOptions& options)
{
    PreviewModel preview;
    auto& [outside, model] = preview;
    startState(model, options);
    outside.time.advance(settling);
    applyFlags(model, options);
    const auto picture = options.settings ? pictureOfSettings(model, outside.time)
                                          : pictureOfNotch(model, outside.time);
    const auto error = replacePicture(picture, options.path);
    if (error)
        std::fputs(("Preview write failed: " + error.message() + '\n').c_str(), stderr);
    return error ? 1 : 0;
}

} // namespace notch
