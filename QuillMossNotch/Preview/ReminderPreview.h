// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Preview/PreviewOptions.h"

#include <string>

namespace notch {

// Pictures of the reminders, of a model with a made-up host: no task, question or program of the
// person is looked at. Each makes a new file, or none. Needs a QApplication. The exit status; what
// came of it is told in one line.

int renderCompletionPreview(const std::string& path);
int renderQuestionPreview(const QuestionPreviewOptions& options);

} // namespace notch
