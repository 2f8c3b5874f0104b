// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Preview/PreviewOptions.h"

namespace notch {

// The picture that --render-preview asks for, of a model with made-up surroundings: nothing of the
// person's account or desktop is read, and nothing outside the process hears of it. Needs a
// QApplication. The exit status; a failure is told in one line on stderr.
int renderPreview(const PreviewOptions& options);

} // namespace notch
