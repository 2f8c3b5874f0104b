// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"
#include "SettingsView/HookFlow.h"

#include <optional>
#include <span>
#include <string>
#include <utility>

namespace notch {

// What a picture of the surfaces shall show, as the command line says it.
struct PreviewOptions {
    std::string path; // Of the PNG file; an existing one is replaced.
    bool idle = false; // No demonstration.
    bool native = false; // The demonstration is a card of the host's window.
    bool details = false; // All parameters are unfolded.
    bool receipt = false; // The demonstration was allowed.
    bool compact = false; // The notch is closed.
    bool settings = false; // The settings view in place of the notch.

    bool operator==(const PreviewOptions&) const = default;

    // Nothing without --render-preview. The path is empty when none follows it.
    static std::optional<PreviewOptions> parse(std::span<const std::string> arguments);
};

// Makes that picture, off the screen, from a model that was not started: nothing outside the
// process hears of it, and the person's switches do not change it. Needs a QApplication; its event
// loop runs for half a second.
class PreviewRender {
public:
    PreviewRender(AppModel& model, const Clock& clock, HookFlow::Surroundings hookFiles)
        : model_(model)
        , clock_(clock)
        , hookFiles_(std::move(hookFiles))
    {
    }

    // The exit status. A failure is told in one line on stderr.
    int run(const PreviewOptions& options);

private:
    void startState(const PreviewOptions& options);
    void applyFlags(const PreviewOptions& options);

    AppModel& model_;
    const Clock& clock_;
    HookFlow::Surroundings hookFiles_;
};

} // namespace notch
