// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"
#include "Rehearsal/FakeDependencies.h"

namespace notch {

inline constexpr double compactPreviewWidth = 240;

// A model that is not started, with made-up surroundings: no edition has the hook, and one process
// of the host runs in the background. Laid out as on a screen without a notch of its own.
struct PreviewModel {
    PreviewModel()
    {
        outside.profiles->clear();
        model.setNotchHeight(minimumNotchHeight);
        model.setWidths(maximumPanelWidth, compactPreviewWidth);
    }

    FakeDependencies outside;
    AppModel model{outside.seams()};
};

} // namespace notch
